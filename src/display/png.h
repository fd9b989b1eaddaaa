#pragma once

#include <string>

#include "display/pixels.h"

namespace keelview {

/// The bytes of a PNG file of an image, in red, green and blue; what is clear is white there. Empty for an
/// image without pixels (Portable Network Graphics Specification, second edition, W3C 2003).
std::string PngOf(const Pixels& image);

}  // namespace keelview
