#include "distribution/page_writer.h"

#include <QCoreApplication>

#include "base/files.h"
#include "base/paths.h"

namespace keelview {

namespace fs = std::filesystem;

WrittenPage WritePage(const PageOrder& order, const fs::path& file) {
    const fs::path running = PathOf(QCoreApplication::applicationDirPath().toStdString());
    const fs::path program =
        FindPageProgram({order.Tree, running, running.parent_path() / "share" / "keelview"});
    if (program.empty())
        return {std::make_error_code(std::errc::no_such_file_or_directory), PathOf(PageProgramName), {}};
    Page page = MakePage(order, program);
    if (!page.Trouble.empty()) return {std::make_error_code(std::errc::io_error), PathOf(page.Trouble), {}};
    return {WriteFileAtomically(file, page.Html), file, std::move(page.Missing)};
}

fs::path PagePath(const fs::path& appPath, const std::string& name) {
    return FindBelow(appPath, "distribution") / PathOf(name);
}

}  // namespace keelview
