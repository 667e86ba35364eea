// The least that a program with a status icon can be.
#include <QApplication>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QPixmap picture(24, 24);
    picture.fill(Qt::white);
    QSystemTrayIcon icon(picture);
    icon.show();
    return QApplication::exec();
}
