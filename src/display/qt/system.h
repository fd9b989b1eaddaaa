#pragma once

#include <memory>

#include "display/dialogs.h"
#include "display/platform.h"

namespace keelview {

/// The operating system through the toolkit and the usual desktop programs.
std::unique_ptr<Platform> MakePlatform();

/// Message boxes of the toolkit.
std::unique_ptr<Dialogs> MakeDialogs();

}  // namespace keelview
