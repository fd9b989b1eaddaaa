#include "display/overlay.h"

namespace keelview {

void Overlay::Begin(const Canvas& canvas) {
    below_ = canvas.image_.Bits;
    drawn_.clear();
}

void Overlay::End(const Canvas& canvas) {
    const std::vector<Pixel>& bits = canvas.image_.Bits;
    if (bits.size() != below_.size()) return;
    for (std::size_t at = 0; at < bits.size(); ++at)
        if (bits[at] != below_[at]) drawn_.push_back({at, below_[at], bits[at]});
}

void Overlay::TakeBack(Canvas& canvas) {
    std::vector<Pixel>& bits = canvas.image_.Bits;
    if (bits.size() == below_.size())
        for (const Drawn& pixel : drawn_)
            if (bits[pixel.At] == pixel.Ink) bits[pixel.At] = pixel.Below;
    drawn_.clear();
    canvas.ChangedAll();
}

}  // namespace keelview
