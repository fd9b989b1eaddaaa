#pragma once

#include <memory>

#include "display/application.h"
#include "display/dialogs.h"
#include "display/platform.h"

class QWidget;

namespace keelview {

/// The operating system through the toolkit and the usual desktop programs.
std::unique_ptr<Platform> MakePlatform(DataFolderRule dataFolder);

/// Message boxes of the toolkit.
std::unique_ptr<Dialogs> MakeDialogs();

/// The window that a question comes from: the one that takes the events, else any that is shown; none where
/// nothing is.
QWidget* AskingWindow();

}  // namespace keelview
