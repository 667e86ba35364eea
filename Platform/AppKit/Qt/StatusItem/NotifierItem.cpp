#include "AppKit/Qt/StatusItem/NotifierItem.h"

#include "AppKit/NSStatusBar.h"
#include "AppKit/Qt/Drawing/Symbol.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QGuiApplication>
#include <QtEndian>

const QString NotifierItem::watcherService = "org.kde.StatusNotifierWatcher";
const QString NotifierItem::watcherPath = "/StatusNotifierWatcher";

namespace {

const QString path = "/StatusNotifierItem";

QString service() {
    return QString("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
}

NotifierPicture pictureFrom(QImage image) {
    image.convertTo(QImage::Format_ARGB32);
    NotifierPicture picture{image.width(), image.height(), {}};
    picture.pixels.resize(image.sizeInBytes());
    qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / 4, picture.pixels.data());
    return picture;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPicture& picture) {
    argument.beginStructure();
    argument << picture.width << picture.height << picture.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPicture& picture) {
    argument.beginStructure();
    argument >> picture.width >> picture.height >> picture.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& tip) {
    argument.beginStructure();
    argument << tip.icon << tip.pictures << tip.title << tip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& tip) {
    argument.beginStructure();
    argument >> tip.icon >> tip.pictures >> tip.title >> tip.text;
    argument.endStructure();
    return argument;
}

NotifierItem::NotifierItem(NSStatusBarButton& button)
    : m_button(button), m_bus(QDBusConnection::sessionBus()) {
    qDBusRegisterMetaType<NotifierPicture>();
    qDBusRegisterMetaType<NotifierPictures>();
    qDBusRegisterMetaType<NotifierToolTip>();
    m_bus.registerObject(path, this,
                         QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots |
                             QDBusConnection::ExportAllSignals);
    m_bus.registerService(service());
    auto introduction = QDBusMessage::createMethodCall(watcherService, watcherPath, watcherService,
                                                       "RegisterStatusNotifierItem");
    m_bus.send(introduction << service());
}

NotifierItem::~NotifierItem() {
    m_bus.unregisterService(service()); // By which the tray knows that it has gone.
    m_bus.unregisterObject(path);
}

void NotifierItem::refresh() {
    emit NewTitle();
    emit NewIcon();
    emit NewToolTip();
}

QRect NotifierItem::place() const { return {QCursor::pos(), QSize(1, 1)}; }

QString NotifierItem::description() const {
    const auto& image = m_button.image();
    return QString::fromStdString(image ? image->accessibilityDescription().value_or("") : "");
}

QString NotifierItem::title() const {
    return QCoreApplication::applicationName() + ": " + description();
}

QString NotifierItem::iconName() const {
    return m_button.image() ? themeNameOf(*m_button.image()) : QString();
}

NotifierPictures NotifierItem::iconPixmap() const {
    NotifierPictures pictures;
    if (!m_button.image()) return pictures;
    const QColor ink(0x76, 0x76, 0x76); // Stands out from light grounds and dark ones alike.
    for (const int side : {16, 22, 24, 32, 44, 48, 64}) // The usual ones, and twice those.
        pictures.append(pictureFrom(pictureOf(*m_button.image(), side, ink)));
    return pictures;
}

NotifierToolTip NotifierItem::toolTip() const {
    return {{}, {}, QString::fromStdString(m_button.toolTip()), {}};
}

// A tray on the bus does not tell which keys were held.
void NotifierItem::Activate(int, int) {
    click(*this, m_button, NSEventTypeLeftMouseUp, QGuiApplication::queryKeyboardModifiers());
}

void NotifierItem::ContextMenu(int, int) { click(*this, m_button, NSEventTypeRightMouseUp, {}); }
