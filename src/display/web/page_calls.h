#pragma once

#include <cstddef>
#include <cstdint>

/// What the program asks of the page around it; web/*.js answer. A control, a timer and a task are known
/// there by their address, which is never looked at. Texts are UTF-8 by place and length; sizes are pixels
/// of the layout unless they say otherwise. None of these calls comes back into the program, but for the
/// room that an answer is written to (GiveRoom).
namespace keelview::page {

extern "C" {

// Controls. `kind` is a ControlKind, `look` what it knows of its kind (a BorderStyle, an Align...).
void PageMake(const void* control, const void* parent, int kind, int look, const char* name,
              std::size_t size);
void PageRemove(const void* control);
void PagePlace(const void* control, int left, int top, int width, int height);
void PageShow(const void* control, bool shown);
void PageEnable(const void* control, bool enabled);
void PageRaise(const void* control);
void PageFocus(const void* control, bool chooseAll);
void PageTabStop(const void* control);
/// Colours are those of display/colour.h, system colours as they are.
void PageBack(const void* control, std::uint32_t colour);
void PageInk(const void* control, std::uint32_t colour);
void PageFont(const void* control, double pixels, bool bold);
void PageAlign(const void* control, int align);
/// The caption, the text or the title of a control.
void PageText(const void* control, const char* text, std::size_t size);
void PageTick(const void* control, bool ticked);
void PageStripes(const void* control, const std::uint32_t* bgr, std::size_t count);
/// Rows of a list: one more for an index behind the last, all gone for a negative one.
void PageItem(const void* control, int index, const char* text, std::size_t size);
void PageChoose(const void* control, int index);
void PageRange(const void* control, int least, int most, int step, int value);

// Surfaces. Asks for SurfaceFrame before the screen is next drawn.
void PageFollow(const void* surface);
/// Puts a part of an image (device pixels) on a surface's canvas, which takes the image's size.
void PagePut(const void* surface, const std::uint32_t* pixels, int width, int height, double ratio,
             int left, int top, int partWidth, int partHeight);

// Letters, by the browser's own text drawing. Sizes are device pixels.
double PageMeasure(const char* text, std::size_t size, double pixels, bool italic);
/// The cover, 0 to 255, of each pixel of a box by a line that begins at `left` on the row `base`.
void PageLetter(const char* text, std::size_t size, double pixels, bool italic, double left, double base,
                std::uint8_t* cover, int width, int height);

// Time. An interval of 0 stops a timer.
void PageTimer(const void* timer, int milliseconds);
void PageAskTask(const void* task);
void PageDropTask(const void* task);
double PageUtcMilliseconds();
double PageLocalMilliseconds();
double PageSteadySeconds();

// The window and the system.
/// The form that stands in the page now (a FormEvents), or none.
void PageWindow(const void* window);
double PageWindowSize(bool height);
double PageScreenRatio();
void PageTitle(const char* text, std::size_t size);
void PageWholeScreen(bool whole);
bool PageIsWholeScreen();
bool PageIsJapanese();
void PageSound();
void PageCopy(const char* text, std::size_t size);
void PageOpen(const char* address, std::size_t size);
void PageHandOver(const char* name, std::size_t nameSize, const char* bytes, std::size_t size);
void PageBusy(bool busy);
/// Shows the documents of the race, to be kept as files.
void PageOfferDocuments();

// Questions. The answer to PageInput is written to GiveRoom; false where there is none.
void PageSay(const char* title, std::size_t titleSize, const char* text, std::size_t size);
bool PageAsk(const char* text, std::size_t size);
bool PageInput(const char* text, std::size_t size, const char* proposal, std::size_t proposalSize);

// Pictures that the page has decoded before the program began: the size in pixels of the one with a name,
// and its pixels, not multiplied by their alpha. Width 0 where there is none.
int PagePictureSide(const char* name, std::size_t size, bool height);
void PagePicture(const char* name, std::size_t size, std::uint32_t* pixels);
/// The bytes of a PNG file of opaque pixels, written to GiveRoom.
void PagePng(const std::uint32_t* pixels, int width, int height);

}  // extern "C"

}  // namespace keelview::page
