#include "Foundation/NSValues.h"

#include <QUrl>

std::shared_ptr<NSURL> NSURL::URLWithString(const std::string& text) {
    const QUrl url(QString::fromStdString(text), QUrl::StrictMode);
    if (url.isEmpty() || !url.isValid()) return nullptr;
    return std::shared_ptr<NSURL>(new NSURL(text));
}
