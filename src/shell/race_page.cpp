#include "shell/race_page.h"

#include <string>

#include "distribution/page_writer.h"
#include "session/documents.h"
#include "session/voice.h"

namespace keelview {

void OfferPage(const Settings& settings, const RaceControl& race, Services& services) {
    const Voice voice(settings, services.dialogs);
    services.platform.SetBusyPointer(true);
    const WrittenPage page = WritePage(
        {.Tree = settings.AppPath, .RaceNames = {race.RaceFileName}, .UseEnglish = settings.UseEnglish},
        PagePath(settings.AppPath, PageFileName(race.RaceFileName)));
    services.platform.SetBusyPointer(false);
    if (page.Error)
        return voice.Say({"The page could not be made:", "ページを作成できません。"},
                         page.At.string() + "\r\n(" + page.Error.message() + ")");
    std::string said =
        voice.Str({"The race as a page for any browser:", "どのブラウザーでも開けるページ："}) + "\r\n" +
        page.At.string();
    if (!page.Missing.empty())
        said += "\r\n\r\n" +
                voice.Str({"These files were not found, and are not in it:",
                           "次のファイルがなかったため、含まれていません:"}) +
                "\r\n" + LinesOfBox(page.Missing);
    if (services.dialogs.YesNo(said + "\r\n\r\n" + voice.Str({"Open it?", "開きますか？"}),
                               settings.AppTitle))
        OpenDocument(settings, services, page.At.string());
}

}  // namespace keelview
