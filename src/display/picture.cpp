#include <cmath>
#include <utility>

#include "base/files.h"
#include "display/canvas.h"
#include "display/canvas_platform.h"

namespace keelview {

Picture::Picture(Pixels image) {
    if (!image.Empty()) image_ = std::make_shared<const Pixels>(std::move(image));
}

Picture Picture::FromFile(const std::filesystem::path& path) {
    return Picture(ReadImageFile(path));
}

Picture Picture::FromAssets(std::string_view name) {
    return Picture(ReadAsset(name));
}

const Pixels& Picture::Data() const {
    static const Pixels none;
    return image_ ? *image_ : none;
}

int Picture::Width() const {
    return static_cast<int>(std::lround(Data().Width / Data().Ratio));
}

int Picture::Height() const {
    return static_cast<int>(std::lround(Data().Height / Data().Ratio));
}

Colour Picture::PixelAt(int x, int y) const {
    const Pixels& image = Data();
    const int column = static_cast<int>(x * image.Ratio);
    const int row = static_cast<int>(y * image.Ratio);
    if (x < 0 || y < 0 || column >= image.Width || row >= image.Height) return Black;
    return ColourOf(image.Row(row)[column]);
}

bool Picture::SaveBitmap(const std::filesystem::path& path) const {
    return !Empty() && !WriteFileAtomically(path, BitmapFile(Data()));
}

}  // namespace keelview
