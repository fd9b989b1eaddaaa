#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "display/canvas_platform.h"
#include "display/raster_blend.h"
#include "display/web/native_control.h"
#include "display/web/page_calls.h"
#include "display/web/surface_board.h"

namespace keelview {

namespace {

/// A line of text as the cover of each pixel of its box.
struct Letters {
    std::vector<std::uint8_t> Cover;  ///< row by row, none until it is drawn
    int Width = 0;                    ///< device pixels
    int Height = 0;
    int Before = 0;      ///< pixels of the box before the text begins
    double Advance = 0;  ///< its width
};

/// The lines that were drawn or measured, as the browser's own drawing takes longer than all that is done
/// with it here.
class LetterStore {
  public:
    Letters& Of(std::string_view text, double pixels, bool italic) {
        if (bytes_ > MostBytes) {
            kept_.clear();
            bytes_ = 0;
        }
        const auto [place, added] = kept_.try_emplace({std::string(text), pixels, italic});
        Letters& letters = place->second;
        if (added) {
            letters.Advance = page::PageMeasure(text.data(), text.size(), pixels, italic);
            bytes_ += text.size() + sizeof(Letters);
        }
        return letters;
    }

    const Letters& Drawn(std::string_view text, double pixels, bool italic) {
        Letters& letters = Of(text, pixels, italic);
        if (!letters.Cover.empty()) return letters;
        constexpr double room = 0.3;  // of a letter's height that it may lean out of its place
        letters.Before = static_cast<int>(std::ceil(pixels * room));
        letters.Width =
            static_cast<int>(std::ceil(std::min(letters.Advance, WidestLine))) + 2 * letters.Before;
        letters.Height = static_cast<int>(std::ceil(pixels * (AscentShare + DescentShare + room)));
        const auto size =
            static_cast<std::size_t>(letters.Width) * static_cast<std::size_t>(letters.Height);
        letters.Cover.resize(size);
        page::PageLetter(text.data(), text.size(), pixels, italic, letters.Before,
                         std::round(pixels * AscentShare), letters.Cover.data(), letters.Width,
                         letters.Height);
        bytes_ += size;
        return letters;
    }

  private:
    static constexpr std::size_t MostBytes = std::size_t{8} << 20U;
    static constexpr double WidestLine = 8192.0;  // device pixels; no screen is wider
    std::map<std::tuple<std::string, double, bool>, Letters> kept_;
    std::size_t bytes_ = 0;
};

class PagePen : public PlatformPen {
  public:
    explicit PagePen(Pixels& image) : image_(image) {}

    double LineHeight(const Lettering& lettering) override {
        return PixelsOfPoints(lettering.Points) * (AscentShare + DescentShare);
    }

    double TextWidth(std::string_view text, const Lettering& lettering) override {
        return Store().Of(text, PixelsOfPoints(lettering.Points), lettering.Italic).Advance;
    }

    double DrawText(std::string_view line, const Point& topLeft, const Lettering& lettering,
                    Colour colour) override {
        const double ratio = image_.Ratio;
        const Letters& letters =
            Store().Drawn(line, PixelsOfPoints(lettering.Points) * ratio, lettering.Italic);
        const int left = static_cast<int>(std::lround(std::round(topLeft.X) * ratio)) - letters.Before;
        const int top = static_cast<int>(std::lround(std::round(topLeft.Y) * ratio));
        const Pixel ink = PixelOf(colour);
        const int firstColumn = std::max(0, -left);
        const int endColumn = std::min(letters.Width, image_.Width - left);
        for (int row = std::max(0, -top); row < std::min(letters.Height, image_.Height - top); ++row) {
            const std::uint8_t* const cover =
                letters.Cover.data() + static_cast<std::ptrdiff_t>(row) * letters.Width;
            Pixel* const under = image_.Row(top + row) + left;
            for (int x = firstColumn; x < endColumn; ++x)
                if (cover[x] != 0) raster::Blend(under[x], ink, cover[x] + (cover[x] >> 7));
        }
        return letters.Width / ratio;
    }

    void DrawPicture(const Pixels& picture, const Point& topLeft) override {
        const double ratio = image_.Ratio;
        LayScaled(image_, picture, {topLeft.X * ratio, topLeft.Y * ratio}, ratio / picture.Ratio,
                  {{0.0, 0.0}, {static_cast<double>(image_.Width), static_cast<double>(image_.Height)}});
    }

  private:
    /// One for all pens, as the toolkits' own are.
    static LetterStore& Store() {
        static LetterStore store;
        return store;
    }

    Pixels& image_;
};

Pixel Multiplied(Pixel plain) {
    const Pixel alpha = plain >> 24U;
    Pixel product = alpha << 24U;
    for (const unsigned shift : {0U, 8U, 16U})
        product |= ((plain >> shift & 0xFFU) * alpha + 127U) / 255U << shift;
    return product;
}

}  // namespace

std::unique_ptr<PlatformPen> MakePen(Pixels& image) {
    return std::make_unique<PagePen>(image);
}

// A race has no pictures of its own that are drawn.
Pixels ReadImageFile(const std::filesystem::path& /*path*/) {
    return {};
}

Pixels ReadAsset(std::string_view name) {
    Pixels picture{.Bits = {},
                   .Width = page::PagePictureSide(name.data(), name.size(), false),
                   .Height = page::PagePictureSide(name.data(), name.size(), true)};
    if (picture.Width <= 0 || picture.Height <= 0) return {};
    picture.Bits.resize(static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height));
    page::PagePicture(name.data(), name.size(), picture.Bits.data());
    picture.Opaque = std::ranges::all_of(picture.Bits, [](Pixel pixel) { return pixel >> 24U == 255U; });
    std::ranges::transform(picture.Bits, picture.Bits.begin(), Multiplied);
    return picture;
}

double ScreenRatio() {
    return page::PageScreenRatio();
}

}  // namespace keelview
