#pragma once

namespace keelview {

class Application;

/// The application that all tests of forms run under.
Application& TheApplication();

}  // namespace keelview
