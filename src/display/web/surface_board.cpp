#include "display/web/surface_board.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "display/raster.h"
#include "display/raster_blend.h"
#include "display/web/page_calls.h"

namespace keelview {

namespace {

/// The first and the end of the whole numbers that cover a stretch, within 0 and `size`.
std::pair<int, int> Covering(double low, double high, int size) {
    return {static_cast<int>(std::clamp(std::floor(low), 0.0, static_cast<double>(size))),
            static_cast<int>(std::clamp(std::ceil(high), 0.0, static_cast<double>(size)))};
}

Bounds Times(const Bounds& box, double factor) {
    return {{box.Low.X * factor, box.Low.Y * factor}, {box.High.X * factor, box.High.Y * factor}};
}

/// The pixel of a picture between its four neighbours.
Pixel Between(const Pixels& picture, double x, double y) {
    const auto clampTo = [](double at, int size) {
        return std::clamp(at, 0.0, static_cast<double>(size - 1));
    };
    x = clampTo(x, picture.Width);
    y = clampTo(y, picture.Height);
    const int left = static_cast<int>(x);
    const int top = static_cast<int>(y);
    const int right = std::min(left + 1, picture.Width - 1);
    const int below = std::min(top + 1, picture.Height - 1);
    const auto across = raster::CoverOf(x - left);
    const auto mix = [](Pixel one, Pixel other, int share) {
        const auto rest = static_cast<std::uint64_t>(raster::FullCover - share);
        return raster::Packed(
            (raster::Spread(one) * rest + raster::Spread(other) * static_cast<std::uint64_t>(share)) >> 8U);
    };
    return mix(mix(picture.Row(top)[left], picture.Row(top)[right], across),
               mix(picture.Row(below)[left], picture.Row(below)[right], across), raster::CoverOf(y - top));
}

}  // namespace

void LayScaled(Pixels& image, const Pixels& picture, const Point& topLeft, double scale,
               const Bounds& within) {
    if (picture.Empty() || !(scale > 0)) return;
    const auto [left, right] =
        Covering(std::max(within.Low.X, topLeft.X),
                 std::min(within.High.X, topLeft.X + picture.Width * scale), image.Width);
    const auto [top, bottom] =
        Covering(std::max(within.Low.Y, topLeft.Y),
                 std::min(within.High.Y, topLeft.Y + picture.Height * scale), image.Height);
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x) {
            const Pixel above =
                Between(picture, (x + 0.5 - topLeft.X) / scale - 0.5, (y + 0.5 - topLeft.Y) / scale - 0.5);
            Pixel& under = image.Row(y)[x];
            under = picture.Opaque ? above : raster::Over(under, above);
        }
}

SurfaceBoard::SurfaceBoard(const Container& parent, std::string_view name, BorderStyle border)
    : NativeControl(ControlKind::Surface, name, &parent, static_cast<int>(border)) {
    Edge = BorderWidth(border);
    Floating->Follow = [this](const Bounds& part) { Follow(part); };
}

SurfaceBoard::~SurfaceBoard() {
    Floating->Follow = nullptr;
}

void SurfaceBoard::Follow(const Bounds& part) {
    dirty_.Add(part);
    if (!std::exchange(awaited_, true)) page::PageFollow(static_cast<NativeControl*>(this));
}

/// Device pixels of the image, without its right and its bottom.
struct SurfaceBoard::Box {
    int Left, Top, Right, Bottom;

    /// Calls with the begin of each row, and how long it is.
    template <class Take>
    void ForRows(Pixels& image, const Take& take) const {
        for (int y = Top; y < Bottom && Left < Right; ++y) take(image.Row(y) + Left, Right - Left);
    }
};

/// What floats is laid over the image itself, and what it hides is put back afterwards: so the image, which
/// may be as large as the screen, is not copied for it.
void SurfaceBoard::Put() {
    awaited_ = false;
    const Bounds dirty = std::exchange(dirty_, {});
    if (Image == nullptr) return;
    const double ratio = Image->Ratio;
    const auto [left, right] = Covering(dirty.Low.X * ratio, dirty.High.X * ratio, Image->Width);
    const auto [top, bottom] = Covering(dirty.Low.Y * ratio, dirty.High.Y * ratio, Image->Height);
    if (left >= right || top >= bottom) return;
    const std::vector<const SpriteItem*> sprites = Floating->SpritesIn(dirty);
    const std::vector<Box> boxes = BoxesUnder(sprites, dirty);
    under_.clear();
    for (const Box& box : boxes)
        box.ForRows(*Image,
                    [&](const Pixel* row, int size) { under_.insert(under_.end(), row, row + size); });
    Floating->DrawLines(*Image, dirty, top, bottom);
    for (const SpriteItem* sprite : sprites) LaySprite(*sprite, dirty);
    page::PagePut(static_cast<NativeControl*>(this), Image->Bits.data(), Image->Width, Image->Height, ratio,
                  left, top, right - left, bottom - top);
    auto kept = under_.cbegin();
    for (const Box& box : boxes)
        box.ForRows(*Image, [&](Pixel* row, int size) {
            std::copy_n(kept, size, row);
            kept += size;
        });
}

/// Where something will be laid over a part of the image: all its rows where there are lines.
std::vector<SurfaceBoard::Box> SurfaceBoard::BoxesUnder(const std::vector<const SpriteItem*>& sprites,
                                                        const Bounds& shown) const {
    const double ratio = Image->Ratio;
    std::vector<Box> boxes;
    const auto add = [&](const Bounds& reach) {
        const auto [left, right] = Covering(reach.Low.X * ratio, reach.High.X * ratio, Image->Width);
        const auto [top, bottom] = Covering(reach.Low.Y * ratio, reach.High.Y * ratio, Image->Height);
        boxes.push_back({left, top, right, bottom});
    };
    for (const SpriteItem* sprite : sprites) add(sprite->Reach().Grown(1.0));
    if (Floating->HasLinesIn(shown)) add({{0, shown.Low.Y}, {Image->Width / ratio, shown.High.Y}});
    return boxes;
}

bool SurfaceBoard::TakeMove(const Point& at) {
    const SpriteItem* hearer = Floating->HearerAt(at);
    if (hearer == nullptr) return false;
    Fire(*hearer->OnMouseMove, hearer->MoveAt(at));
    return true;
}

void SurfaceBoard::LaySprite(const SpriteItem& sprite, const Bounds& shown) {
    const double ratio = Image->Ratio;
    const Point at{sprite.Reach().Low.X * ratio, sprite.Reach().Low.Y * ratio};
    if (sprite.Image->Ratio == ratio && at.X == std::round(at.X) && at.Y == std::round(at.Y))
        raster::LayOver(*Image, *sprite.Image, static_cast<int>(at.X), static_cast<int>(at.Y));
    else
        LayScaled(*Image, *sprite.Image, at, ratio / sprite.Image->Ratio, Times(shown, ratio));
}

}  // namespace keelview
