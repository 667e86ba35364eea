#include "QuartzCore/CALayer.h"

void CALayer::setBackgroundColor(const CGColor& color) {
    if (m_backgroundColor == color) return;
    m_backgroundColor = color;
    if (m_delegate) m_delegate->displayLayer(*this);
}
