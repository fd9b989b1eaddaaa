#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QString>
#include <cmath>

#include "base/files.h"
#include "display/canvas.h"
#include "display/qt/canvas_impl.h"
#include "display/qt/convert.h"

namespace keelview {

namespace {

// Bytes that the decoded image of a file may take.
constexpr int ImageMegabytes = 256;

/// The image of a file or of the program, with `ratio` of its pixels to one of the layout.
Picture ReadPicture(const QString& name, double ratio) {
    QImageReader reader(name);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    QImageReader::setAllocationLimit(ImageMegabytes);
    QImage image = reader.read();
    if (image.isNull()) return {};
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    return Picture(std::make_shared<const Picture::Impl>(Picture::Impl{std::move(image)}));
}

}  // namespace

Picture::Picture() = default;
Picture::Picture(std::shared_ptr<const Impl> impl) : impl_(std::move(impl)) {}

Picture Picture::FromFile(const std::filesystem::path& path) {
    return ReadPicture(QString::fromStdString(path.string()), 1.0);
}

Picture Picture::FromAssets(std::string_view name) {
    const QString plain = ":/assets/" + ToQt(name);
    QString twice = plain;
    twice.insert(twice.lastIndexOf('.'), "@2x");
    const bool sharpScreen = qGuiApp != nullptr && qGuiApp->devicePixelRatio() > 1.0;
    if (sharpScreen && QFile::exists(twice)) return ReadPicture(twice, 2.0);
    return ReadPicture(plain, 1.0);
}

bool Picture::Empty() const {
    return !impl_ || impl_->Image.isNull();
}

int Picture::Width() const {
    return Empty() ? 0 : static_cast<int>(std::lround(impl_->Image.deviceIndependentSize().width()));
}

int Picture::Height() const {
    return Empty() ? 0 : static_cast<int>(std::lround(impl_->Image.deviceIndependentSize().height()));
}

Colour Picture::PixelAt(int x, int y) const {
    if (Empty() || x < 0 || y < 0 || x >= Width() || y >= Height()) return Black;
    const double ratio = impl_->Image.devicePixelRatio();
    const QPoint at(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
    if (!impl_->Image.valid(at)) return Black;
    const QRgb pixel = impl_->Image.pixel(at);
    return Rgb(static_cast<unsigned>(qRed(pixel)), static_cast<unsigned>(qGreen(pixel)),
               static_cast<unsigned>(qBlue(pixel)));
}

bool Picture::SaveBitmap(const std::filesystem::path& path) const {
    if (Empty()) return false;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !impl_->Image.save(&buffer, "BMP")) return false;
    return !WriteFileAtomically(path, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace keelview
