#include "support/fake_platform.h"

namespace keelview {

int FakePlatform::DriveType(const std::filesystem::path& folder) {
    DriveAsked.push_back(folder);
    return Drive;
}

int FakePlatform::OpenDocument(const std::string& target, const std::filesystem::path& /*folder*/) {
    Documents.push_back(target);
    return DocumentResult;
}

bool FakePlatform::StartProgram(const std::filesystem::path& program) {
    Programs.push_back(program);
    return ProgramStarts;
}

void FakePlatform::DeliverEvents() {
    ++Deliveries;
    if (OnDeliverEvents) OnDeliverEvents();
}

void FakePlatform::Pause(int milliseconds) {
    PausedMilliseconds += milliseconds;
    Seconds += milliseconds / 1000.0;
    if (OnDeliverEvents) OnDeliverEvents();
}

}  // namespace keelview
