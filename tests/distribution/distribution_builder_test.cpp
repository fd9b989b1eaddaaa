#include "distribution/distribution_builder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "distribution/distribution_form.h"
#include "distribution/process.h"
#include "racedata/shore_file.h"
#include "support/qt_driver.h"
#include "support/race_tree.h"
#include "support/test_world.h"

namespace keelview {
namespace {

namespace fs = std::filesystem;

TEST(LibraryListing, TheSystemsOwnLibrariesStayOut) {
    const auto libraries = ParseLibraryListing(
        "\tlinux-vdso.so.1 (0x00007ffd)\n"
        "\tlibQt6Core.so.6 => /usr/lib/x86_64-linux-gnu/libQt6Core.so.6 (0x00007f1)\n"
        "\tlibstdc++.so.6 => /opt/my (new) libs/libstdc++.so.6 (0x00007f2)\n"
        "\tlibc.so.6 => /lib/x86_64-linux-gnu/libc.so.6 (0x00007f3)\n"
        "\tlibxcb-cursor.so.0 => not found\n"
        "\t/lib64/ld-linux-x86-64.so.2 (0x00007f4)\n"
        "\tlibm.so.6 => /lib/x86_64-linux-gnu/libm.so.6 (0x00007f5)\n"
        "\tstatically linked\n");
    ASSERT_EQ(libraries.size(), 3U);
    EXPECT_EQ(libraries[1].Path, "/opt/my (new) libs/libstdc++.so.6");
    EXPECT_EQ(libraries[2].Name + libraries[2].Path.string(), "libxcb-cursor.so.0");
    EXPECT_NE(AskLoader(fs::read_symlink("/proc/self/exe")).find("libc.so"), std::string::npos);
    EXPECT_EQ(AskLoader("/nowhere/at all"), "");
    std::string output;
    EXPECT_EQ(RunAndWait({"sh", "-c", "echo 'a b'; exit 3"}, output), 3);
    EXPECT_EQ(output, "a b\n");
    EXPECT_EQ(RunAndWait({"no-such-program-here"}, output), -1);
}

TEST(FolderName, OnlyPlainNamesCanBeUsed) {
    for (const char* good : {"Enoshima 2004", "江の島", "a.b", "R1,R2"})
        EXPECT_FALSE(FolderNameTrouble(good)) << good;
    for (const char* bad :
         {"", "   ", "a/b", "/", "..", ".", "../x", "a\\b", "-r", "what?", "a\nb", "x.unfinished", "Con"})
        EXPECT_TRUE(FolderNameTrouble(bad)) << bad;
}

/// A tree with a program that needs one library of a toolkit of its own, and two races.
struct DistributionTest : testing::Test {
    RaceTree tree;
    DistributionOrder order;

    void SetUp() override {
        order.FolderName = "Spring Cup";
        order.RaceNames = {"R1.txt", "R2.txt", "R1.txt"};  // one of them twice
        tree.Write("keelview", "program");
        fs::permissions(tree.Root() / "keelview", fs::perms::owner_all);
        for (const char* file :
             {"qt/lib/libQt6Core.so.6", "qt/plugins/platforms/libqxcb.so",
              "qt/plugins/platforminputcontexts/libcompose.so", "fonts/LiberationSans-Regular.ttf",
              "fonts/LiberationSans-Bold.ttf", "fonts/VL-PGothic-Regular.ttf", "gun.wav",
              "GPSDAT-is-not-it/b.trk", "winddat/wind, east.CSV", "coastline/5339.cst",
              "coastline/5340.cst", "coastline/NOTICE", "coastline/COPYING.LESSER",
              "attachment/notice \"1\".pdf", "help/index.html", "help/map.png", "help-e/index.html"})
            tree.Write(file, "x");
        tree.Boat("a.trk", 35 * 60, 139 * 60, 0.001, 0, 0, 20);
        tree.Race("R1.txt",
                  "BN, A.TRK, Alpha\r\nBN, gone.trk, Ghost\r\nWF, wind, east.CSV\r\nMAP, 5339\r\n");
        tree.Race("R2.txt", "AT,  notice \"1\".pdf\r\nAT, ../../secret\r\nBN, gone.trk, Ghost\r\n");
    }

    DistributionResult Build() {
        return BuildDistribution(tree.Root(), order, [this](const fs::path& file) {
            const std::string library = (tree.Root() / "qt/lib/libQt6Core.so.6").string();
            return file.filename() == "keelview" ? "libQt6Core.so.6 => " + library + " (0x1)\n" : "";
        });
    }
    fs::path Built(const std::string& place) const {
        return tree.Root() / "distribution/Spring Cup" / place;
    }
};

TEST_F(DistributionTest, AWebMediumHoldsAllThatItsRacesName) {
    const DistributionResult result = Build();
    ASSERT_FALSE(result.Error) << result.Error.message();
    EXPECT_EQ(tree.Files(Built("")),
              "attachment/notice \"1\".pdf coastline/5339.cst coastline/COPYING.LESSER coastline/NOTICE "
              "fonts/LiberationSans-Bold.ttf fonts/LiberationSans-Regular.ttf fonts/VL-PGothic-Regular.ttf "
              "gpsdat/A.TRK gun.wav help/index.html help/map.png keelview lib/libQt6Core.so.6 "
              "plugins/platforms/libqxcb.so qt.conf "
              "raceadmin/R1.txt raceadmin/R2.txt raceadmin/ver.00 winddat/wind, east.CSV ");
    EXPECT_EQ(*ReadWholeFile(Built("raceadmin/ver.00")), "1,0\r\n");
    EXPECT_EQ(fs::status(Built("keelview")).permissions() & fs::perms::owner_exec, fs::perms::owner_exec);
    EXPECT_EQ(result.Missing, (std::vector<std::string>{"gpsdat/gone.trk", "attachment/../../secret"}));
    EXPECT_FALSE(fs::exists(tree.Root() / "distribution/Spring Cup.unfinished"));

    EXPECT_EQ(result.Packed, tree.Root() / "distribution/Spring Cup.tar.gz");
    std::string names;
    RunAndWait({"tar", "-tzf", result.Packed.string()}, names);
    EXPECT_NE(names.find("Spring Cup/gpsdat/A.TRK\n"), std::string::npos) << names;
    EXPECT_TRUE(DistributionExists(tree.Root(), "SPRING cup"));
    fs::remove_all(tree.Root() / "distribution/Spring Cup");
    EXPECT_TRUE(DistributionExists(tree.Root(), "Spring Cup"));  // its packed file is still there
    EXPECT_FALSE(DistributionExists(tree.Root(), "Spring"));
}

TEST_F(DistributionTest, ARaceThatNamesNoMapGetsTheSquaresUnderItsTracksAndOfTheWorldItsOwnShores) {
    tree.Boat("off Enoshima.trk", RaceTree::Lat, RaceTree::Lon, 0.001, 0, 0, 20);
    tree.Write("coastline/5239.cst", "x");
    const std::pair<const int, std::string> near{ShoreTileAt(2080, 8340), "near"};
    tree.Write("coastline/world.shore", ShoreFileOf({{ShoreTileAt(0, 0), "far"}, near}));
    tree.Race("R1.txt", "BN, off Enoshima.trk, Alpha\r\n");
    order.RaceNames = {"R1.txt"};
    EXPECT_TRUE(Build().Missing.empty());
    EXPECT_EQ(tree.Files(Built("coastline")), "5239.cst COPYING.LESSER NOTICE world.shore ");
    EXPECT_EQ(ReadWholeFile(Built("coastline/world.shore")), ShoreFileOf({near}));
}

TEST_F(DistributionTest, ACdRomStartsByItselfInItsLanguageAndWhatItLacksIsTold) {
    order.Target = Medium::CdRom;
    order.UseEnglish = true;
    order.AttachMap = false;
    order.StartRace = "第1レース.txt";
    for (const char* needed : {"qt/plugins/platforms/libqxcb.so", "gun.wav", "help-e/index.html"})
        fs::remove(tree.Root() / needed);
    const DistributionResult result = Build();
    EXPECT_TRUE(!result.Error && result.Packed.empty());
    EXPECT_EQ(*ReadWholeFile(Built("autorun.inf")), "[autorun]\r\nIcon = keelview\r\nopen = keelview\r\n");
    EXPECT_EQ(*ReadWholeFile(Built("raceadmin/ver.00")), "1,1\r\n");
    EXPECT_EQ(*ReadWholeFile(Built("raceadmin/racefile.st")),
              "\x91\xe6\x31\x83\x8c\x81\x5b\x83\x58.txt\r\n");
    EXPECT_TRUE(IsFile(Built("plugins/platforminputcontexts/libcompose.so")));
    EXPECT_FALSE(fs::exists(Built("coastline")));
    EXPECT_EQ(result.Missing,
              (std::vector<std::string>{"platforms/libqxcb.so", "gun.wav", "help-e/index.html",
                                        "gpsdat/gone.trk", "attachment/../../secret"}));
}

TEST_F(DistributionTest, APageIsOneFileWithTheRaceOfItsStartFirst) {
    order.Target = Medium::Page;
    order.StartRace = "R2.txt";
    EXPECT_EQ(Build().FailedAt, "keelview-page.html");  // the program of a page is not everywhere
    tree.Write("keelview-page.html", "<title>{{title}}</title>{{race}}");
    tree.Race("R2.txt", "T2, in the afternoon\r\nBN, gone.trk, Ghost\r\n");
    const DistributionResult result = Build();
    ASSERT_FALSE(result.Error) << result.Error.message();
    EXPECT_EQ(result.Folder, tree.Root() / "distribution/Spring Cup.html");
    EXPECT_TRUE(ReadWholeFile(result.Folder)->starts_with("<title>Spring Cup in the afternoon</title>"));
    EXPECT_EQ(result.Missing, std::vector<std::string>{"gpsdat/gone.trk"});
    EXPECT_TRUE(DistributionExists(tree.Root(), "spring Cup"));

    order.PageForEach = true;
    order.FolderName = "Pages";
    const DistributionResult pages = Build();
    EXPECT_EQ(pages.Folder, tree.Root() / "distribution/Pages");
    EXPECT_EQ(tree.Files(pages.Folder), "R1.html R2.html ");
    EXPECT_EQ(pages.Missing, std::vector<std::string>{"gpsdat/gone.trk"});
    fs::remove(tree.Root() / "keelview-page.html");
    order.FolderName = "None";
    EXPECT_EQ(Build().FailedAt, "keelview-page.html");
    EXPECT_FALSE(DistributionExists(tree.Root(), "None"));
    EXPECT_FALSE(fs::exists(tree.Root() / "distribution/None.unfinished"));
}

TEST_F(DistributionTest, WithTheProgramForWindowsBesideItServesBothAndIsPackedForBoth) {
    for (const char* file :
         {"windows/keelview.exe", "windows/Qt6Core.dll", "windows/plugins/platforms/qwindows.dll",
          "windows/licences/LGPL.txt", "windows/raceadmin/R1.txt"})
        tree.Write(file, file);
    order.FolderName = "Spring Cup 江の島";
    const DistributionResult both = Build();
    EXPECT_TRUE(both.For.Own && both.For.Windows);
    for (const auto& [name, text] :
         {std::pair{"keelview.exe", "windows/keelview.exe"}, {"keelview", "program"}})
        EXPECT_EQ(ReadWholeFile(both.Folder / name), text);
    ASSERT_EQ(both.Packed.filename(), "Spring Cup 江の島.zip");
    const fs::path unpacked = tree.Root() / "unpacked";
    const char* script =
        "import os, sys, zipfile\n"
        "with zipfile.ZipFile(sys.argv[1]) as packed:\n"
        "    packed.extractall(sys.argv[2])\n"
        "    print(oct(packed.getinfo('Spring Cup 江の島/keelview').external_attr >> 16), end='')\n";
    std::string rights;
    EXPECT_EQ(RunAndWait({"python3", "-c", script, both.Packed.string(), unpacked.string()}, rights), 0);
    EXPECT_EQ(rights, "0o100755");
    EXPECT_EQ(tree.Files(unpacked / "Spring Cup 江の島"), tree.Files(both.Folder));

    fs::remove(tree.Root() / "keelview");
    order.FolderName = "Windows alone";
    order.Target = Medium::CdRom;
    const DistributionResult windows = Build();
    EXPECT_TRUE(!windows.For.Own && windows.For.Windows);
    EXPECT_EQ(tree.Read("distribution/Windows alone/autorun.inf"),
              "[autorun]\r\nIcon = keelview.exe\r\nopen = keelview.exe\r\n");
    EXPECT_EQ(tree.Files(windows.Folder / "plugins"), "platforms/qwindows.dll ");
    EXPECT_EQ(tree.Files(windows.Folder / "licences"), "LGPL.txt ");
}

TEST_F(DistributionTest, ABuildThatFailsLeavesNothing) {
    tree.Write("gpsdat/a.trk", std::string(300'000, 'T'));
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{100'000, before.rlim_max};  // stands for a disc that is full in the middle
    setrlimit(RLIMIT_FSIZE, &full);
    const DistributionResult result = Build();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_TRUE(result.Error && fs::is_empty(tree.Root() / "distribution"));
    EXPECT_EQ(result.FailedAt.filename(), "A.TRK");
    EXPECT_FALSE(Build().Error);  // and the next one succeeds
}

struct DistributionFormTest : testing::Test, TestWorld {
    DistributionFormTest() {
        tree.Race("R1.txt", "");
        tree.Race("R2.txt", "");
        tree.Write("raceadmin/ver.txt", "");
        fs::copy_file("/bin/true", tree.Root() / "keelview");
        fs::create_directories(tree.Root() / "distribution/Old");
    }
};

TEST_F(DistributionFormTest, RacesAreChosenByClicksAndBuilt) {
    DistributionForm form(app.settings, services);
    form.ShowNow();
    driver::Click(form.Command1);  // nothing chosen: nothing said
    EXPECT_TRUE(dialogs.All().empty() && !form.Check2.Visible());
    driver::ClickRow(form.List1, 0);
    driver::Click(form.Command3);
    EXPECT_EQ(form.List2.ListCount(), 0);
    driver::ClickRow(form.List1, 1);
    driver::ClickRow(form.List1, 0);
    driver::ClickRow(form.List2, 1);
    EXPECT_EQ(form.Text1.Text(), "R1.txt");

    for (const auto& [name, said] : {std::pair{"  ", "Input the name of the folder"},
                                     {"a/b", "A folder name must not"},
                                     {"old", "A folder of this name exists. Input another name."}}) {
        form.Combo1.SetText(name);
        dialogs.AnswerOk();
        driver::Click(form.Command1);
        EXPECT_TRUE(Said().starts_with(said)) << name << Said();
        EXPECT_FALSE(form.Closed());
    }
    fs::rename(tree.Root() / "distribution", tree.Root() / "aside");
    tree.Write("distribution", "a file in the way");
    driver::Type(form.Combo1, "New one");
    dialogs.AnswerYesNo(true);
    dialogs.AnswerOk();
    driver::Click(form.Command1);
    EXPECT_TRUE(Said().starts_with("The distribution could not be built") && !form.Closed()) << Said();
    fs::remove(tree.Root() / "distribution");
    fs::rename(tree.Root() / "aside", tree.Root() / "distribution");
    driver::Click(form.Option2);
    dialogs.AnswerYesNo(false);
    driver::Click(form.Command1);
    dialogs.AnswerYesNo(true);
    dialogs.AnswerYesNo(true);  // opens the folder
    driver::Click(form.Command1);
    EXPECT_TRUE(form.Closed());
    const std::string folder = (tree.Root() / "distribution/New one").string();
    EXPECT_TRUE(Said().find(folder + "\r\n\r\nIt is for Linux x86-64") != std::string::npos &&
                Said().find("\r\ngun.wav") != std::string::npos)  // this tree has none
        << Said();
    EXPECT_EQ(platform.Documents, std::vector<std::string>{folder});
    const std::string made = "distribution/New one/raceadmin/";
    EXPECT_EQ(tree.Read(made + "racefile.st") + tree.Read(made + "ver.00"), "R1.txt\r\n1,1\r\n");
    EXPECT_EQ(platform.BusyPointers, (std::vector<bool>{true, false, true, false}));
}

TEST_F(DistributionFormTest, TheTwoHundredFirstRaceAndTheFiftyFirstPickAreRefused) {
    for (int race = 100; race < 300; ++race) tree.Write("raceadmin/X" + std::to_string(race) + ".txt", "");
    dialogs.AnswerOk();
    DistributionForm form(app.settings, services);
    EXPECT_EQ(Said(), "Only the first 200 race files are listed. Not listed: 2");
    form.ShowNow();
    ASSERT_EQ(form.List1.ListCount(), 200);
    for (int pick = 1; pick <= 50; ++pick) driver::ClickRow(form.List1, 0);
    dialogs.AnswerOk();
    driver::ClickRow(form.List1, 0);
    EXPECT_EQ(Said(), "A distribution holds at most 50 races");
    EXPECT_EQ(form.List2.ListCount(), 50);
    driver::Click(form.Command2);
    EXPECT_TRUE(form.Closed());
}

}  // namespace
}  // namespace keelview
