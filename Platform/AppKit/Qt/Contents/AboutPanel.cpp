#include "AppKit/NSApplication.h"
#include "AppKit/NSWindow.h"
#include "AppKit/Qt/Contents/ViewContent.h"
#include "AppKit/Qt/Windows/Coordinates.h"
#include "Foundation/NSBundle+Private.h"

#include <QEvent>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

using Credits = std::shared_ptr<NSAttributedString>; ///< Null for none.

// In points.
constexpr int iconSize = 96;
constexpr int sideEdge = 36;
constexpr int lowerEdge = 28;

QString information(const char* key) { return QString::fromStdString(infoOf(key)); }

QLabel* line(const QString& text, int pixels, QFont::Weight weight) {
    auto* label = labelOf(text, pixels, weight);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

/// The bundle's icon, name and version, and the credits.
class AboutContent : public ViewContent {
public:
    explicit AboutContent(const Credits& credits)
        : m_credits(credits), m_line(line({}, 11, QFont::Normal)) {
        auto* all = new QVBoxLayout(this);
        all->setContentsMargins(sideEdge, 12, sideEdge, lowerEdge);
        all->setSpacing(4);
        all->addWidget(iconLabel(iconSize), 0, Qt::AlignCenter);
        all->addSpacing(8);
        all->addWidget(line(information("CFBundleName"), 15, QFont::Bold));
        all->addWidget(
            line("Version " + information("CFBundleShortVersionString"), 11, QFont::Normal));
        all->addSpacing(10);
        all->addWidget(m_line);
        new QShortcut(Qt::Key_Escape, this, [this] { window()->close(); });
        showCredits();
    }

protected:
    void changeEvent(QEvent* event) override {
        if (event->type() == QEvent::PaletteChange) showCredits();
        ViewContent::changeEvent(event);
    }

private:
    void showCredits() {
        if (!m_credits) return;
        m_line->setText(QString::fromStdString(m_credits->string()));
        const auto& attributes = m_credits->attributes();
        if (const auto found = attributes.find(NSFontAttributeName); found != attributes.end()) {
            QFont font = m_line->font();
            font.setPixelSize(static_cast<int>(std::any_cast<NSFont>(found->second).pointSize()));
            m_line->setFont(font);
        }
        const auto color = attributes.find(NSForegroundColorAttributeName);
        if (color == attributes.end()) return;
        const QColor ink = colorFrom(std::any_cast<NSColor>(color->second).CGColor());
        QPalette palette = m_line->palette();
        palette.setColor(QPalette::WindowText, ink);
        m_line->setPalette(palette);
    }

    const Credits m_credits;
    QLabel* const m_line;
};

} // namespace

void NSApplication::orderFrontStandardAboutPanelWithOptions(const AboutPanelOptions& options) {
    if (!m_aboutPanel || !m_aboutPanel->isVisible()) {
        const auto found = options.find(NSAboutPanelOptionCredits);
        const auto credits =
            found == options.end() ? nullptr : std::any_cast<Credits>(found->second);
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
