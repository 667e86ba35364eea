#include "AppKit/NSGraphics.h"
#include "AppKit/Qt/Contents/Controllers.h"
#include "AppKit/Qt/Contents/ViewContent.h"
#include "AppKit/Qt/Drawing/NSGraphicsContext.h"
#include "Foundation/NSBundle+Private.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

// In points.
constexpr int iconSize = 96;
constexpr int sideEdge = 36;
constexpr int lowerEdge = 28;

QString information(const char* key) { return QString::fromStdString(infoOf(key)); }

QLabel* line(const QString& text, int pixels, QFont::Weight weight) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    label->setFont(font);
    return label;
}

class AboutContent : public ViewContent {
public:
    explicit AboutContent(const std::shared_ptr<NSAttributedString>& credits)
        : m_credits(credits), m_line(line({}, 11, QFont::Normal)) {
        auto* all = new QVBoxLayout(this);
        all->setContentsMargins(sideEdge, 12, sideEdge, lowerEdge);
        all->setSpacing(4);
        auto* icon = new QLabel;
        icon->setPixmap(QApplication::windowIcon().pixmap(iconSize));
        icon->setAccessibleName(information("CFBundleName"));
        all->addWidget(icon, 0, Qt::AlignCenter);
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

    const std::shared_ptr<NSAttributedString> m_credits;
    QLabel* const m_line;
};

class AboutController : public NSViewController {
public:
    explicit AboutController(std::shared_ptr<NSAttributedString> credits)
        : m_credits(std::move(credits)) {}

    std::unique_ptr<ViewContent> loadView() override {
        return std::make_unique<AboutContent>(m_credits);
    }

private:
    const std::shared_ptr<NSAttributedString> m_credits;
};

} // namespace

std::shared_ptr<NSViewController>
aboutController(const std::shared_ptr<NSAttributedString>& credits) {
    return std::make_shared<AboutController>(credits);
}
