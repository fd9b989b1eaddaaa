#pragma once

#include <memory>
#include <string>

#include "display/dialogs.h"
#include "display/platform.h"

namespace keelview {

/// The browser as the program's system: nothing is started, noted or kept there.
std::unique_ptr<Platform> MakePagePlatform();

/// The browser's own questions; a message stands in the page until the person puts it away.
std::unique_ptr<Dialogs> MakePageDialogs();

/// A text that the page answers with: it is written to the room that it asks for (GiveRoom).
class PageAnswer {
  public:
    /// Room for an answer of so many bytes; the answer before is gone.
    static char* Room(std::size_t size);
    static std::string Take();
    static std::size_t Size() { return Kept().size(); }

  private:
    static std::string& Kept();
};

}  // namespace keelview
