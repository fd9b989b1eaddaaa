#include "display/floats.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ranges>

#include "display/raster.h"
#include "display/stripes.h"

namespace keelview {

namespace {

// The image of a sprite is never larger than this; a boat that fills the screen may be a little soft.
constexpr int LargestSprite = 1024;
// How far a line may reach beyond its ends, pixels.
constexpr double LineRoom = 3.0;

// Sprites and lines further out than this lie off every screen.
double Limited(double value) {
    return std::isfinite(value) ? std::clamp(value, -1e7, 1e7) : 0.0;
}

bool Meet(const Bounds& a, const Bounds& b) {
    return a.Low.X < b.High.X && b.Low.X < a.High.X && a.Low.Y < b.High.Y && b.Low.Y < a.High.Y;
}

bool Holds(const Bounds& box, const Point& at) {
    return at.X >= box.Low.X && at.X < box.High.X && at.Y >= box.Low.Y && at.Y < box.High.Y;
}

template <class Item>
auto SeenIn(const Bounds& part) {
    return [&part](const Item* item) { return item->Visible && Meet(item->Reach(), part); };
}

/// Shows or hides an item, either of which changes the place where it lies.
template <class Item>
void SetSeen(bool visible, Item& item, const Floats& floats) {
    if (visible == item.Visible) return;
    item.Visible = true;
    floats.Changed(item);
    item.Visible = visible;
}

void DrawLine(Pixels& image, const LineItem& line, int firstRow, int endRow) {
    const double ratio = image.Ratio;
    const std::array<Point, 2> ends{{{line.X1, line.Y1}, {line.X2, line.Y2}}};
    const auto draw = [&](const Point& from, const Point& to, Colour ink) {
        raster::DrawSegment(
            image, {(from.X + 0.5) * ratio, (from.Y + 0.5) * ratio},
            {(to.X + 0.5) * ratio, (to.Y + 0.5) * ratio},
            {.Colour = PixelOf(ink), .Width = ratio, .FirstRow = firstRow, .EndRow = endRow});
    };
    draw(ends[0], ends[1], line.Ink);
    for (const LineStripe& stripe : StripesAlong(ends, line.Stripes))
        draw(stripe.From, stripe.To, stripe.Ink);
}

}  // namespace

Bounds SpriteItem::Reach() const {
    const Point at{std::round(Left), std::round(Top)};
    return {at, {at.X + Width, at.Y + Height}};
}

MouseEvent SpriteItem::MoveAt(const Point& at) const {
    const Point corner = Reach().Low;
    MouseEvent told;
    told.X = std::floor(at.X - corner.X);
    told.Y = std::floor(at.Y - corner.Y);
    return told;
}

Bounds LineItem::Reach() const {
    Bounds box;
    box.Add(Point{X1, Y1});
    box.Add(Point{X2, Y2});
    return box.Grown(LineRoom);
}

void Floats::Remove(const SpriteItem& item) {
    Changed(item);
    std::erase(sprites_, &item);
}

void Floats::Remove(const LineItem& item) {
    Changed(item);
    std::erase(lines_, &item);
}

std::vector<const SpriteItem*> Floats::SpritesIn(const Bounds& part) const {
    std::vector<const SpriteItem*> seen;
    std::ranges::copy_if(sprites_, std::back_inserter(seen), SeenIn<SpriteItem>(part));
    return seen;
}

bool Floats::HasLinesIn(const Bounds& part) const {
    return std::ranges::any_of(lines_, SeenIn<LineItem>(part));
}

void Floats::DrawLines(Pixels& image, const Bounds& part, int firstRow, int endRow) const {
    for (const LineItem* line : lines_ | std::views::filter(SeenIn<LineItem>(part)))
        if (line->X1 != line->X2 || line->Y1 != line->Y2) DrawLine(image, *line, firstRow, endRow);
}

const SpriteItem* Floats::HearerAt(const Point& at) const {
    for (const SpriteItem* sprite : std::views::reverse(sprites_))
        if (sprite->Visible && *sprite->OnMouseMove && Holds(sprite->Reach(), at)) return sprite;
    return nullptr;
}

struct Sprite::Place : SpriteItem {
    explicit Place(const Surface& surface) : On(FloatsOf(surface)) {}
    std::shared_ptr<Floats> On;

    void Follow() const { On->Changed(*this); }
};

Sprite::Sprite(Surface& parent, std::string_view /*name*/, double width, double height)
    : Canvas(Ground::Clear, LargestSprite), place_(std::make_unique<Place>(parent)) {
    place_->Image = &Retained();
    place_->OnMouseMove = &OnMouseMove;
    place_->On->Add(*place_);
    SetSize(width, height);
}

Sprite::~Sprite() {
    place_->On->Remove(*place_);
}

void Sprite::Move(double left, double top) {
    if (left == place_->Left && top == place_->Top) return;
    place_->Follow();
    place_->Left = Limited(left);
    place_->Top = Limited(top);
    place_->Follow();
}

void Sprite::SetSize(double width, double height) {
    place_->Follow();
    place_->Width = std::clamp(std::ceil(Limited(width)), 0.0, 1e6);
    place_->Height = std::clamp(std::ceil(Limited(height)), 0.0, 1e6);
    RenewImage(static_cast<int>(place_->Width), static_cast<int>(place_->Height));
}

double Sprite::Left() const {
    return place_->Left;
}

double Sprite::Top() const {
    return place_->Top;
}

double Sprite::Width() const {
    return place_->Width;
}

double Sprite::Height() const {
    return place_->Height;
}

bool Sprite::Visible() const {
    return place_->Visible;
}

void Sprite::SetVisible(bool visible) {
    SetSeen<SpriteItem>(visible, *place_, *place_->On);
}

void Sprite::Changed(const Bounds& /*part*/) {
    place_->Follow();
}

struct LineObject::Impl : LineItem {
    explicit Impl(const Surface& surface) : On(FloatsOf(surface)) {}
    std::shared_ptr<Floats> On;

    void Follow() const { On->Changed(*this); }
};

LineObject::LineObject(Surface& parent, std::string_view /*name*/, Colour colour)
    : impl_(std::make_unique<Impl>(parent)) {
    impl_->Ink = colour;
    impl_->On->Add(*impl_);
}

LineObject::~LineObject() {
    impl_->On->Remove(*impl_);
}

void LineObject::Place(double x1, double y1, double x2, double y2) {
    LineItem& item = *impl_;
    if (item.X1 == x1 && item.Y1 == y1 && item.X2 == x2 && item.Y2 == y2) return;
    impl_->Follow();
    item.X1 = Limited(x1);
    item.Y1 = Limited(y1);
    item.X2 = Limited(x2);
    item.Y2 = Limited(y2);
    impl_->Follow();
}

double LineObject::X1() const {
    return impl_->X1;
}

double LineObject::Y1() const {
    return impl_->Y1;
}

double LineObject::X2() const {
    return impl_->X2;
}

double LineObject::Y2() const {
    return impl_->Y2;
}

bool LineObject::Visible() const {
    return impl_->Visible;
}

void LineObject::SetVisible(bool visible) {
    SetSeen<LineItem>(visible, *impl_, *impl_->On);
}

void LineObject::SetBorderColor(Colour colour) {
    if (impl_->Ink == colour) return;
    impl_->Ink = colour;
    impl_->Follow();
}

void LineObject::SetStripes(std::span<const Colour> stripes) {
    if (std::ranges::equal(impl_->Stripes, stripes)) return;
    impl_->Stripes.assign(stripes.begin(), stripes.end());
    impl_->Follow();
}

}  // namespace keelview
