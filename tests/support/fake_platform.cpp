#include "support/fake_platform.h"

namespace keelview {

int FakePlatform::OpenDocument(const std::string& target, const std::filesystem::path& /*folder*/) {
    Documents.push_back(target);
    return DocumentResult;
}

bool FakePlatform::StartProgram(const std::filesystem::path& program) {
    Programs.push_back(program);
    return ProgramStarts;
}

}  // namespace keelview
