// A text editor to stand below the cover. It tells where its caret is, how far it is scrolled, and
// the text that it was not given.
#include <QApplication>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>

#include <cstdio>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0); // Nothing moves by itself.
    QPlainTextEdit editor;
    QFont font("DejaVu Sans");
    font.setPointSize(argc > 1 ? atoi(argv[1]) : 20);
    editor.setFont(font);
    editor.setPlainText(
        QString("ACCOUNT PASSWORD MERIDIAN LANTERN HARBOUR QUARTER\n").repeated(100));

    const auto tell = [&] {
        QString typed = editor.toPlainText();
        typed.remove(QRegularExpression("[^a-z]"));
        std::printf("at %d scrolled %d typed %s\n", editor.textCursor().position(),
                    editor.verticalScrollBar()->value(), qPrintable(typed));
        std::fflush(stdout);
    };
    QObject::connect(&editor, &QPlainTextEdit::cursorPositionChanged, tell);
    QObject::connect(&editor, &QPlainTextEdit::textChanged, tell);
    QObject::connect(editor.verticalScrollBar(), &QScrollBar::valueChanged, tell);
    QShortcut fullScreen(QKeySequence(Qt::Key_F11), &editor);
    QObject::connect(&fullScreen, &QShortcut::activated,
                     [&] { editor.setWindowState(editor.windowState() ^ Qt::WindowFullScreen); });
    editor.showMaximized();
    tell();
    return QApplication::exec();
}
