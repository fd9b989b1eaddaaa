#pragma once

#include <functional>
#include <string>

#include "display/canvas.h"
#include "instruments/side_block.h"

namespace keelview {

/// Draws a picture of the side panel by itself, as wide as a page of paper has room for.
using PaintSidePicture = std::function<Picture(const SidePicture& picture)>;

/// The blocks of a tab as one HTML page, to be printed or sent on: it holds its pictures, and loads
/// nothing. Names and titles stand in it as text, whatever signs they hold.
std::string SideDocument(const std::string& title, const SideBlocks& blocks, bool useEnglish,
                         const PaintSidePicture& paint);

}  // namespace keelview
