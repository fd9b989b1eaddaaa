#include "support/album.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>
#include <algorithm>
#include <cstdlib>

#include "support/qt_driver.h"

namespace keelview {

namespace {

constexpr int Shrink = 4;     // pixels of the form to one of the picture, each way
constexpr int Alike = 10;     // of 255, in any of red, green and blue
constexpr int MayDiffer = 3;  // pixels of the picture

QImage Shrunk(const QImage& shot) {
    QImage small(shot.width() / Shrink, shot.height() / Shrink, QImage::Format_RGB32);
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            int red = 0, green = 0, blue = 0;
            for (int i = 0; i < Shrink * Shrink; ++i) {
                const QRgb pixel = shot.pixel(x * Shrink + i % Shrink, y * Shrink + i / Shrink);
                red += qRed(pixel), green += qGreen(pixel), blue += qBlue(pixel);
            }
            constexpr int pixels = Shrink * Shrink;
            small.setPixel(x, y, qRgb(red / pixels, green / pixels, blue / pixels));
        }
    }
    return small;
}

int Apart(QRgb one, QRgb other) {
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

}  // namespace

void ExpectLooksAsEver(const Form& form, const std::string& name) {
    ExpectLooksAsEver(*driver::Face(form).window(), name);
}

void ExpectLooksAsEver(QWidget& window, const std::string& name) {
    driver::Settle();
    const QImage now = Shrunk(window.grab().toImage());
    const QString file = QString::fromStdString(KEELVIEW_PICTURES "/" + name + ".png");
    if (std::getenv("KEELVIEW_RENEW_PICTURES") != nullptr) {
        ASSERT_TRUE(now.save(file)) << file.toStdString();
        return;
    }
    const QImage before(file);
    ASSERT_EQ(before.size(), now.size()) << name;
    int differing = 0;
    QPoint last;
    for (int y = 0; y < now.height(); ++y)
        for (int x = 0; x < now.width(); ++x)
            if (Apart(before.pixel(x, y), now.pixel(x, y)) > Alike)
                ++differing, last = {x * Shrink, y * Shrink};
    EXPECT_LE(differing, MayDiffer) << name << ": the last one round " << last.x() << ", " << last.y();
    if (differing > MayDiffer) now.save(QString::fromStdString(name + "_now.png"));
}

int Furthest(const QImage& image, const QImage& other) {
    int most = 0;
    for (int y = 1; y + 1 < image.height(); ++y)
        for (int x = 1; x + 1 < image.width(); ++x) {
            int least = 255;
            for (int k = 0; k < 9 && least > most; ++k)
                least =
                    std::min(least, Apart(image.pixel(x, y), other.pixel(x + k % 3 - 1, y + k / 3 - 1)));
            most = std::max(most, least);
        }
    return most;
}

}  // namespace keelview
