#include <utility>

#include "base/background.h"

namespace keelview {

struct Background::Impl {
    std::function<bool()> Piece;
    bool Done = false;
};

Background::Background(std::function<bool()> piece) : impl_(std::make_unique<Impl>()) {
    impl_->Piece = std::move(piece);
}

Background::~Background() = default;

bool Background::IsDone() {
    if (!impl_->Done) impl_->Done = !impl_->Piece();
    return impl_->Done;
}

}  // namespace keelview
