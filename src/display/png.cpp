#include "display/png.h"

#include <zlib.h>

#include <cstdint>

#include "display/raster_blend.h"

namespace keelview {

namespace {

constexpr Pixel WhitePixel = 0xFFFFFFFFU;

void AddNumber(std::string& bytes, std::uint32_t number) {
    for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(number >> shift & 0xFFU);
}

/// Length, kind, content and the checksum of the latter two.
void AddChunk(std::string& file, const std::string& kind, const std::string& content) {
    AddNumber(file, static_cast<std::uint32_t>(content.size()));
    const std::string summed = kind + content;
    file += summed;
    AddNumber(file, static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(summed.data()),
                                                     static_cast<uInt>(summed.size()))));
}

/// Each row behind the byte that says that it is not filtered.
std::string RowsOf(const Pixels& image) {
    std::string rows;
    for (int y = 0; y < image.Height; ++y) {
        rows += '\0';
        for (int x = 0; x < image.Width; ++x) {
            const Pixel pixel = raster::Over(WhitePixel, image.Row(y)[x]);
            for (const unsigned shift : {RedShift, GreenShift, BlueShift})
                rows += static_cast<char>(pixel >> shift & 0xFFU);
        }
    }
    return rows;
}

}  // namespace

std::string PngOf(const Pixels& image) {
    if (image.Width <= 0 || image.Height <= 0) return {};
    const std::string rows = RowsOf(image);
    uLongf size = compressBound(static_cast<uLong>(rows.size()));
    std::string packed(size, '\0');
    compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(rows.data()),
              static_cast<uLong>(rows.size()), Z_BEST_COMPRESSION);
    packed.resize(size);
    std::string head;
    AddNumber(head, static_cast<std::uint32_t>(image.Width));
    AddNumber(head, static_cast<std::uint32_t>(image.Height));
    head += std::string("\x08\x02\x00\x00\x00", 5);  // 8 bits of red, green and blue, nothing special
    std::string file = "\x89PNG\r\n\x1A\n";
    AddChunk(file, "IHDR", head);
    AddChunk(file, "IDAT", packed);
    AddChunk(file, "IEND", {});
    return file;
}

}  // namespace keelview
