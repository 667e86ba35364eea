#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/StatusItem/TrayIcon.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QGuiApplication>
#include <QtEndian>

#include <tuple>

using NotifierPicture = std::tuple<int, int, QByteArray>; ///< Width, height and pixels.
using NotifierPictures = QList<NotifierPicture>;
/// An icon's name, or pictures of it; a title and a text.
using NotifierToolTip = std::tuple<QString, NotifierPictures, QString, QString>;

/// A structure on the bus.
template <class... Parts>
static QDBusArgument& operator<<(QDBusArgument& argument, const std::tuple<Parts...>& parts) {
    argument.beginStructure();
    std::apply([&](const auto&... each) { (argument << ... << each); }, parts);
    argument.endStructure();
    return argument;
}

// The bus library wants this one too. Nobody sends any here.
template <class... Parts>
static const QDBusArgument& operator>>(const QDBusArgument& argument, std::tuple<Parts...>&) {
    return argument;
}

namespace {

const QString path = "/StatusNotifierItem";

QString service() {
    return QString("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
}

/// 0xAARRGGBB for each pixel, the highest byte first.
NotifierPicture pictureFrom(QImage image) {
    image.convertTo(QImage::Format_ARGB32);
    QByteArray pixels(image.sizeInBytes(), Qt::Uninitialized);
    qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / 4, pixels.data());
    return {image.width(), image.height(), pixels};
}

class NotifierItem : public QObject, public TrayItem {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(NotifierPictures IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ description)
    Q_PROPERTY(NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)

public:
    explicit NotifierItem(NSStatusBarButton& button)
        : TrayItem(button), m_bus(QDBusConnection::sessionBus()) {
        qDBusRegisterMetaType<NotifierPicture>();
        qDBusRegisterMetaType<NotifierPictures>();
        qDBusRegisterMetaType<NotifierToolTip>();
        m_bus.registerObject(path, this,
                             QDBusConnection::ExportAllProperties |
                                 QDBusConnection::ExportAllSlots |
                                 QDBusConnection::ExportAllSignals);
        m_bus.registerService(service());
        auto introduction = QDBusMessage::createMethodCall(
            notifierWatcher, notifierWatcherPath, notifierWatcher, "RegisterStatusNotifierItem");
        m_bus.send(introduction << service());
    }

    ~NotifierItem() override {
        m_bus.unregisterService(service()); // By which the tray knows that it has gone.
        m_bus.unregisterObject(path);
    }

    void refresh() override {
        emit NewTitle();
        emit NewIcon();
        emit NewToolTip();
    }

    /// A compositor tells nobody where the pointer is, so there it is as the tray says.
    QRect place() const override {
        const bool isTold = QGuiApplication::platformName() != "wayland";
        return {isTold ? QCursor::pos() : m_clicked, QSize(1, 1)};
    }
    QString category() const { return "SystemServices"; }
    QString id() const { return QGuiApplication::desktopFileName(); }
    QString status() const { return "Active"; }
    bool itemIsMenu() const { return false; }
    /// What trays read out: the program, and what a click does next.
    QString title() const { return QCoreApplication::applicationName() + ": " + description(); }

    QString iconName() const { return themeNameOf(image()); }

    NotifierPictures iconPixmap() const {
        NotifierPictures pictures;
        const QColor ink(0x76, 0x76, 0x76); // Stands out from light grounds and dark ones alike.
        for (const int side : {16, 22, 24, 32, 44, 48, 64}) // The usual ones, and twice those.
            pictures.append(pictureFrom(pictureOf(image(), side, ink)));
        return pictures;
    }

    NotifierToolTip toolTip() const {
        return {{}, {}, QString::fromStdString(m_button.toolTip()), {}};
    }

public slots:
    // The clicks, with the point of the screen that they went to. A tray on the bus does not tell
    // which keys were held.
    void Activate(int x, int y) {
        m_clicked = {x, y};
        click(NSEventTypeLeftMouseUp, QGuiApplication::queryKeyboardModifiers());
    }
    void ContextMenu(int x, int y) {
        m_clicked = {x, y};
        click(NSEventTypeRightMouseUp);
    }

signals:
    void NewTitle();
    void NewIcon();
    void NewToolTip();

private:
    QPoint m_clicked;
    QDBusConnection m_bus;
};

} // namespace

std::unique_ptr<TrayItem> notifierItem(NSStatusBarButton& button) {
    return std::make_unique<NotifierItem>(button);
}

#include "NotifierItem.moc"
