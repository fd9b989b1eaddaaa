#pragma once

#include <memory>

#include "display/application.h"
#include "display/dialogs.h"
#include "display/platform.h"

namespace keelview {

/// The operating system through the toolkit and the usual desktop programs.
std::unique_ptr<Platform> MakePlatform(DataFolderRule dataFolder);

/// Message boxes of the toolkit.
std::unique_ptr<Dialogs> MakeDialogs();

}  // namespace keelview
