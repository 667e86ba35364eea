#include "AppKit/NSGraphicsContext+Private.h"

#include <utility>

namespace {
NSGraphicsContext* theContext = nullptr;
}

NSGraphicsContext::NSGraphicsContext(QPainter& painter)
    : m_painter(painter), m_outer(std::exchange(theContext, this)) {}

NSGraphicsContext::~NSGraphicsContext() { theContext = m_outer; }

NSGraphicsContext* NSGraphicsContext::currentContext() { return theContext; }
