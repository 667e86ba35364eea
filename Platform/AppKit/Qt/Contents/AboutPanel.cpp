#include "AppKit/NSApplication.h"
#include "AppKit/NSWindow.h"
#include "AppKit/Qt/Contents/ViewContent.h"
#include "Foundation/NSBundle+Private.h"

#include <QShortcut>
#include <QVBoxLayout>

namespace {

using Credits = std::shared_ptr<NSAttributedString>;

// In points.
constexpr int iconSize = 96;
constexpr int sideEdge = 36;
constexpr int lowerEdge = 28;
constexpr int versionSize = 11;

QString information(const char* key) { return QString::fromStdString(infoOf(key)); }

QLabel* line(const QString& text, int pixels, QFont::Weight weight) {
    auto* label = labelOf(text, pixels, weight);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QLabel* lineOf(const NSAttributedString& credits) {
    const auto& attributes = credits.attributes();
    const auto font = std::any_cast<NSFont>(attributes.at(NSFontAttributeName));
    const auto color = std::any_cast<NSColor>(attributes.at(NSForegroundColorAttributeName));
    auto* label = line(QString::fromStdString(credits.string()), static_cast<int>(font.pointSize()),
                       QFont::Normal);
    if (color == NSColor::secondaryLabelColor())
        label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

/// The bundle's icon, name and version, and the credits.
class AboutContent : public ViewContent {
public:
    explicit AboutContent(const Credits& credits) {
        auto* all = new QVBoxLayout(this);
        all->setContentsMargins(sideEdge, 12, sideEdge, lowerEdge);
        all->setSpacing(4);
        all->addWidget(iconLabel(iconSize), 0, Qt::AlignCenter);
        all->addSpacing(8);
        all->addWidget(line(information("CFBundleName"), 15, QFont::Bold));
        all->addWidget(line("Version " + information("CFBundleShortVersionString"), versionSize,
                            QFont::Normal));
        all->addSpacing(10);
        all->addWidget(lineOf(*credits));
        new QShortcut(Qt::Key_Escape, this, [this] { window()->close(); });
    }
};

} // namespace

void NSApplication::orderFrontStandardAboutPanelWithOptions(const AboutPanelOptions& options) {
    if (!m_aboutPanel || !m_aboutPanel->isVisible()) {
        const auto credits = std::any_cast<Credits>(options.at(NSAboutPanelOptionCredits));
        m_aboutPanel = NSWindow::windowWithContentViewController(
            std::make_shared<ContentController<AboutContent, Credits>>(credits));
        m_aboutPanel->setTitle("About " + infoOf("CFBundleName"));
        m_aboutPanel->setStyleMask(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
        // A menu that stands above the covers asks for it, and gets an answer that is seen.
        m_aboutPanel->setLevel(NSScreenSaverWindowLevel + 2);
        m_aboutPanel->setHidesOnDeactivate(true);
        m_aboutPanel->center();
    }
    m_aboutPanel->makeKeyAndOrderFront(nullptr);
}
