#include "Looks.h"

#include "Harness/Await.h"

#include <QDir>
#include <QImage>

using namespace Harness;

namespace {

QImage imageOf(const Picture& picture) {
    const Area& area = picture.area();
    QImage image(area.width, area.height, QImage::Format_RGB32);
    for (int y = 0; y < area.height; ++y)
        for (int x = 0; x < area.width; ++x)
            image.setPixel(x, y, picture.at(area.x + x, area.y + y));
    return image;
}

int difference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b))});
}

/// Empty where the pictures look alike. A newer toolkit may round an edge in another way.
std::string complaint(const QImage& actual, const QImage& expected) {
    constexpr int tolerable = 40;
    constexpr double tolerableMean = 1.5;
    if (actual.size() != expected.size()) return "another size";
    int worst = 0;
    double sum = 0;
    for (int y = 0; y < actual.height(); ++y)
        for (int x = 0; x < actual.width(); ++x) {
            const int here = difference(actual.pixel(x, y), expected.pixel(x, y));
            worst = std::max(worst, here);
            sum += here;
        }
    const double mean = sum / (actual.width() * actual.height());
    if (worst <= tolerable && mean <= tolerableMean) return {};
    return "a pixel differs by " + std::to_string(worst) + ", all by " + std::to_string(mean);
}

} // namespace

std::string complaintAbout(const Harness::Picture& picture, const std::string& name) {
    const QImage actual = imageOf(picture);
    const QString file = QString::fromStdString(name + ".png");
    const QImage expected(QDir(PICTURES).filePath(file));
    const std::string text = complaint(actual, expected);
    if (text.empty()) return {};
    QDir().mkpath(FOUND_PICTURES);
    const QString found = QDir(FOUND_PICTURES).filePath(file);
    actual.save(found);
    return text + "; see " + found.toStdString();
}

std::string awaitLook(const Screen& screen, const Area& area, const std::string& name) {
    std::string complaint;
    await([&] {
        complaint = complaintAbout(screen.grab(area), name);
        return complaint.empty();
    });
    return complaint;
}
