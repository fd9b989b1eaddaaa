#pragma once

#include <string>

#include "display/pixels.h"

namespace keelview {

/// The bytes of a PNG file of an image, in red, green and blue; what is clear is white there. Empty for an
/// image without pixels (ISO/IEC 15948, Portable Network Graphics).
std::string PngOf(const Pixels& image);

}  // namespace keelview
