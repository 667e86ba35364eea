#include "AppKit/Qt/Contents/AboutController.h"

#include "AppKit/NSColor.h"
#include "AppKit/NSFont.h"
#include "AppKit/Qt/Contents/ViewContent.h"
#include "AppKit/Qt/Drawing/NSGraphicsContext.h"
#include "Foundation/NSBundle.h"

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

QString information(const char* key) {
    return QString::fromStdString(
        NSBundle::mainBundle().objectForInfoDictionaryKey(key).value_or(""));
}

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
    explicit AboutContent(AboutController& about)
        : m_about(about), m_credits(line({}, 11, QFont::Normal)) {
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
        all->addWidget(m_credits);
        new QShortcut(Qt::Key_Escape, this, [this] { window()->close(); });
        m_about.creditsChanged = [this] { showCredits(); };
        showCredits();
    }
    ~AboutContent() override { m_about.creditsChanged = nullptr; }

protected:
    void changeEvent(QEvent* event) override {
        if (event->type() == QEvent::PaletteChange) showCredits();
        ViewContent::changeEvent(event);
    }

private:
    void showCredits() {
        const auto& credits = m_about.credits();
        if (!credits) return m_credits->clear();
        m_credits->setText(QString::fromStdString(credits->string()));
        const auto& attributes = credits->attributes();
        if (const auto font = attributes.find(NSFontAttributeName); font != attributes.end()) {
            QFont changed = m_credits->font();
            changed.setPixelSize(static_cast<int>(std::any_cast<NSFont>(font->second).pointSize()));
            m_credits->setFont(changed);
        }
        const auto color = attributes.find(NSForegroundColorAttributeName);
        if (color == attributes.end()) return;
        const QColor ink = colorFrom(std::any_cast<NSColor>(color->second).CGColor());
        if (m_credits->palette().color(QPalette::WindowText) == ink) return;
        QPalette palette = m_credits->palette();
        palette.setColor(QPalette::WindowText, ink);
        m_credits->setPalette(palette);
    }

    AboutController& m_about;
    QLabel* const m_credits;
};

} // namespace

void AboutController::setCredits(std::shared_ptr<NSAttributedString> credits) {
    m_credits = std::move(credits);
    if (creditsChanged) creditsChanged();
}

std::unique_ptr<ViewContent> AboutController::loadView() {
    return std::make_unique<AboutContent>(*this);
}
