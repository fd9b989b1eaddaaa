#include "display/pixels.h"

#include <array>
#include <initializer_list>

namespace keelview {

namespace {

// 96 dots to the inch, as all pictures of the program have them.
constexpr std::uint32_t PixelsPerMetre = 3780;

void AppendNumber(std::string& bytes, std::uint32_t number, int count) {
    for (int i = 0; i < count; ++i, number >>= 8U) bytes += static_cast<char>(number & 0xFFU);
}

}  // namespace

Pixel PixelOf(Colour colour) {
    const ColourParts parts = PartsOf(colour);
    return 0xFF000000U | static_cast<unsigned>(parts.Red) << RedShift |
           static_cast<unsigned>(parts.Green) << GreenShift |
           static_cast<unsigned>(parts.Blue) << BlueShift;
}

Colour ColourOf(Pixel pixel) {
    const Pixel alpha = pixel >> 24U;
    const auto part = [&](unsigned shift) {
        const Pixel value = pixel >> shift & 0xFFU;
        return alpha == 255 || alpha == 0 ? value : (value * 255 + alpha / 2) / alpha;
    };
    return Rgb(part(RedShift), part(GreenShift), part(BlueShift));
}

std::string BitmapFile(const Pixels& image) {
    constexpr std::uint32_t HeaderSize = 14;
    constexpr std::uint32_t InfoSize = 40;
    const auto width = static_cast<std::uint32_t>(image.Width);
    const auto height = static_cast<std::uint32_t>(image.Height);
    const std::uint32_t rowSize = (width * 3 + 3) / 4 * 4;
    std::string bytes = "BM";
    bytes.reserve(HeaderSize + InfoSize + std::size_t{rowSize} * height);
    for (const std::uint32_t field :
         {HeaderSize + InfoSize + rowSize * height, 0U, HeaderSize + InfoSize, InfoSize, width, height})
        AppendNumber(bytes, field, 4);
    AppendNumber(bytes, 1, 2);   // planes
    AppendNumber(bytes, 24, 2);  // bits a pixel
    for (const std::uint32_t field : {0U, rowSize * height, PixelsPerMetre, PixelsPerMetre, 0U, 0U})
        AppendNumber(bytes, field, 4);
    for (int y = image.Height - 1; y >= 0; --y) {
        const Pixel* row = image.Row(y);
        for (int x = 0; x < image.Width; ++x)
            for (const unsigned shift : {BlueShift, GreenShift, RedShift})
                bytes += static_cast<char>(row[x] >> shift & 0xFFU);
        bytes.append(rowSize - width * 3, '\0');
    }
    return bytes;
}

}  // namespace keelview
