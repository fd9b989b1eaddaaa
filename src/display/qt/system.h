#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "display/dialogs.h"
#include "display/platform.h"

namespace keelview {

/// The operating system through the toolkit and the usual desktop programs.
std::unique_ptr<Platform> MakePlatform();

/// Message boxes of the toolkit; `defaultTitle` is read at each question that has no title of its own.
std::unique_ptr<Dialogs> MakeDialogs(const std::string& defaultTitle);

}  // namespace keelview
