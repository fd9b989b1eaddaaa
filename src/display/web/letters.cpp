#include <algorithm>
#include <cmath>
#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "display/canvas_platform.h"
#include "display/raster_blend.h"
#include "display/web/native_control.h"
#include "display/web/page_calls.h"
#include "display/web/surface_board.h"

namespace keelview {

namespace {

/// A piece of a line as the cover of each pixel of its box.
struct Letters {
    std::vector<std::uint8_t> Cover;  ///< row by row
    int Width = 0;                    ///< device pixels
    int Height = 0;
};

/// How a piece of a line looks that begins some share of a pixel behind a whole one.
struct LetterLook {
    double Pixels = 12.0;  ///< device pixels of its height
    bool Italic = false;
    int Phase = 0;  ///< of so many as there are
    auto operator<=>(const LetterLook&) const = default;
};

constexpr int Phases = 4;
constexpr double LeanRoom = 0.3;  // of a letter's height that it may lean out of its place

/// How many whole pixels of a piece's box lie before its begin.
int RoomBefore(double pixels) {
    return static_cast<int>(std::ceil(pixels * LeanRoom));
}

/// Cuts the next piece off a line: a digit by itself, else all up to the next digit. So the numbers that
/// change with each frame are put together of pieces that are there already.
std::string_view CutPiece(std::string_view& rest) {
    constexpr std::string_view digits = "0123456789";
    const std::size_t digit = std::min(rest.find_first_of(digits), rest.size());
    const std::string_view piece = rest.substr(0, std::max<std::size_t>(digit, 1));
    rest.remove_prefix(piece.size());
    return piece;
}

/// The pieces of lines that were drawn or measured, as the browser's own drawing takes longer than all that
/// is done with them here.
class LetterStore {
  public:
    double Advance(std::string_view piece, double pixels, bool italic) {
        return Of(piece, {pixels, italic, -1}, advances_, [&] {
            bytes_ += piece.size() + sizeof(Letters);
            return page::PageMeasure(piece.data(), piece.size(), pixels, italic);
        });
    }

    const Letters& Drawn(std::string_view piece, const LetterLook& look) {
        const double advance = Advance(piece, look.Pixels, look.Italic);
        return Of(piece, look, letters_, [&] {
            const int before = RoomBefore(look.Pixels);
            Letters letters;
            letters.Width = static_cast<int>(std::ceil(std::min(advance, WidestPiece))) + 2 * before;
            letters.Height =
                static_cast<int>(std::ceil(look.Pixels * (AscentShare + DescentShare + LeanRoom)));
            letters.Cover.resize(static_cast<std::size_t>(letters.Width) *
                                 static_cast<std::size_t>(letters.Height));
            page::PageLetter(piece.data(), piece.size(), look.Pixels, look.Italic,
                             before + static_cast<double>(look.Phase) / Phases,
                             std::round(look.Pixels * AscentShare), letters.Cover.data(), letters.Width,
                             letters.Height);
            bytes_ += letters.Cover.size();
            return letters;
        });
    }

    /// Makes room for more; what was given before is gone.
    void Tidy() {
        if (bytes_ < MostBytes) return;
        advances_.clear();
        letters_.clear();
        bytes_ = 0;
    }

  private:
    template <class Value>
    using Kept = std::map<std::pair<LetterLook, std::string>, Value, std::less<>>;

    template <class Value, class Make>
    static const Value& Of(std::string_view piece, const LetterLook& look, Kept<Value>& kept,
                           const Make& make) {
        const auto found = kept.find(std::pair(look, piece));
        if (found != kept.end()) return found->second;
        return kept.emplace(std::pair(look, std::string(piece)), make()).first->second;
    }

    static constexpr std::size_t MostBytes = std::size_t{8} << 20U;
    static constexpr double WidestPiece = 8192.0;  // device pixels; no screen is wider
    Kept<double> advances_;
    Kept<Letters> letters_;
    std::size_t bytes_ = 0;
};

class PagePen : public PlatformPen {
  public:
    explicit PagePen(Pixels& image) : image_(image) {}

    double LineHeight(const Lettering& lettering) override {
        return PixelsOfPoints(lettering.Points) * (AscentShare + DescentShare);
    }

    double TextWidth(std::string_view text, const Lettering& lettering) override {
        double width = 0;
        while (!text.empty())
            width += Store().Advance(CutPiece(text), PixelsOfPoints(lettering.Points), lettering.Italic);
        return width;
    }

    double DrawText(std::string_view line, const Point& topLeft, const Lettering& lettering,
                    Colour colour) override {
        const double ratio = image_.Ratio;
        LetterLook look{.Pixels = PixelsOfPoints(lettering.Points) * ratio, .Italic = lettering.Italic};
        const double before = RoomBefore(look.Pixels);
        const double left = std::round(topLeft.X) * ratio;
        const int top = static_cast<int>(std::lround(std::round(topLeft.Y) * ratio));
        double advance = 0;
        while (!line.empty()) {
            const std::string_view piece = CutPiece(line);
            const auto quarters = static_cast<int>(std::lround((left + advance) * Phases));
            look.Phase = quarters & (Phases - 1);
            const int at = (quarters - look.Phase) / Phases;
            Lay(Store().Drawn(piece, look), at - static_cast<int>(before), top, PixelOf(colour));
            advance += Store().Advance(piece, look.Pixels, look.Italic);
        }
        Store().Tidy();
        return (advance + 2 * before) / ratio;
    }

    void DrawPicture(const Pixels& picture, const Point& topLeft) override {
        const double ratio = image_.Ratio;
        LayScaled(image_, picture, {topLeft.X * ratio, topLeft.Y * ratio}, ratio / picture.Ratio,
                  {{0.0, 0.0}, {static_cast<double>(image_.Width), static_cast<double>(image_.Height)}});
    }

  private:
    void Lay(const Letters& letters, int left, int top, Pixel ink) {
        const int firstColumn = std::max(0, -left);
        const int endColumn = std::min(letters.Width, image_.Width - left);
        for (int row = std::max(0, -top); row < std::min(letters.Height, image_.Height - top); ++row) {
            const std::uint8_t* const cover =
                letters.Cover.data() + static_cast<std::ptrdiff_t>(row) * letters.Width;
            Pixel* const under = image_.Row(top + row) + left;
            for (int x = firstColumn; x < endColumn; ++x)
                if (cover[x] != 0) raster::Blend(under[x], ink, cover[x] + (cover[x] >> 7));
        }
    }

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
