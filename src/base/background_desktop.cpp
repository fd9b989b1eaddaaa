#include <atomic>
#include <system_error>
#include <thread>
#include <utility>

#include "base/background.h"

namespace keelview {

struct Background::Impl {
    std::function<bool()> Piece;
    std::atomic<bool> Stop = false;
    std::atomic<bool> Done = false;
    std::thread Worker;

    void Work() {
        while (!Stop) {
            if (Piece()) continue;
            Done = true;
            return;
        }
    }
};

Background::Background(std::function<bool()> piece) : impl_(std::make_unique<Impl>()) {
    impl_->Piece = std::move(piece);
    try {
        impl_->Worker = std::thread([impl = impl_.get()] { impl->Work(); });
    } catch (const std::system_error&) {
        impl_->Work();  // no thread is to be had: all at once, late but right
    }
}

Background::~Background() {
    impl_->Stop = true;
    if (impl_->Worker.joinable()) impl_->Worker.join();
}

bool Background::IsDone() {
    return impl_->Done;
}

}  // namespace keelview
