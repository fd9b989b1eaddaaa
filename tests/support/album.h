#pragma once

#include <string>

#include "display/form.h"

class QImage;
class QWidget;

namespace keelview {

/// Expects that a form looks as it does in tests/pictures/`name`.png, where it is held a quarter as wide
/// and high: means of 4 x 4 pixels, so that edges may be a little softer elsewhere, while a line or a
/// letter that is gone, moved or of another colour shows. With KEELVIEW_RENEW_PICTURES in the environment
/// the picture is written in place of being compared: to be looked at, and committed where the change was
/// meant.
void ExpectLooksAsEver(const Form& form, const std::string& name);
/// The same of a window of the toolkit's own.
void ExpectLooksAsEver(QWidget& window, const std::string& name);

/// The most that a colour of a pixel differs, of 255, from all in the other image that are there or beside
/// it: smooth edges apart.
int Furthest(const QImage& image, const QImage& other);

}  // namespace keelview
