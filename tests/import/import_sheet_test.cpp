#include "import/import_sheet.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <memory>

#include "analysis/race_plan_writing.h"
#include "display/application.h"
#include "import/wind_sheet.h"
#include "shell/program.h"
#include "support/album.h"
#include "support/qt_driver.h"
#include "support/regatta_files.h"
#include "support/sailed_race.h"
#include "support/test_world.h"
#include "support/told_recordings.h"

namespace keelview {
namespace {

/// A stick with the boats of a race, a boat that sailed elsewhere, and a photograph.
struct ImportTest : testing::Test, TestWorld {
    ImportTest() {
        const SailedRace race(7, 4);
        race.Write(tree, "x");
        std::filesystem::rename(tree.Root() / "gpsdat", tree.Root() / "stick");
        std::filesystem::remove_all(tree.Root() / "raceadmin");
        race.Moved([](const Position& at) { return Position{at.Lat + 20, at.Lon}; }).Write(tree, "far");
        std::filesystem::rename(tree.Root() / "gpsdat/far1.trk", tree.Root() / "stick/far.trk");
        std::filesystem::remove_all(tree.Root() / "gpsdat");
        std::filesystem::remove_all(tree.Root() / "raceadmin");
        tree.Write("stick/IMG.JPG", "\xFF\xD8\xFF\xE0 no track");
    }

    /// Does something with the sheet as soon as it has read its files, looked for races, and shows so many
    /// boats.
    static void WhenReady(std::function<void(QWidget& sheet)> act, int rows = 1) {
        QTimer::singleShot(10, qApp, [act = std::move(act), rows] {
            QWidget* const sheet = QApplication::activeModalWidget();
            const auto* const ok = sheet ? sheet->findChild<QPushButton*>("Ok") : nullptr;
            const bool ready =
                ok && ok->isEnabled() && Table(*sheet).rowCount() >= rows && !IsSearching(*sheet);
            ready ? act(*sheet) : WhenReady(act, rows);
        });
    }
    static bool IsSearching(QWidget& sheet) {
        const QString notes = sheet.findChild<QPlainTextEdit*>("Notes")->toPlainText();
        return notes.startsWith("Looking") || notes.startsWith("航跡からレースを探");
    }
    static QTableWidget& Table(QWidget& sheet) { return *sheet.findChild<QTableWidget*>(); }
    static void Press(QWidget& sheet, const char* button) {
        sheet.findChild<QPushButton*>(button)->click();
    }
    static void Enter(QWidget& sheet, const char* field, const char* text) {
        auto* const line = sheet.findChild<QLineEdit*>(field);
        line->selectAll();
        QTest::keyClicks(line, text);
    }
    void Drop(const Control& on, const std::string& what) const {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString((tree.Root() / what).string()))});
        QWidget* const window = driver::Face(on).window();
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(window, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(window, &drop);
        driver::Settle();
    }
    std::string Written() const {
        const auto list = [this](const char* folder) {
            return std::filesystem::exists(tree.Root() / folder) ? tree.Files(folder) : std::string();
        };
        return list("gpsdat") + list("raceadmin");
    }
};

TEST_F(ImportTest, AFolderDroppedOnTheMenuIsARaceThatIsShown) {
    tree.Write("raceadmin/Ver.00", "0,1");
    const StartOutcome outcome = SettleStart(app, services, true);  // without a question for the mode
    Program program(app, services,
                    [](std::function<void()> task) { TheApplication().Later(std::move(task)); });
    program.Start(outcome);
    WhenReady([&](QWidget& sheet) {
        QTableWidget& table = Table(sheet);
        ASSERT_EQ(table.rowCount(), 5);
        EXPECT_EQ(table.item(0, 0)->checkState(), Qt::Unchecked);  // the far boat
        table.item(1, 0)->setText("Alcyone");
        table.item(2, 0)->setCheckState(Qt::Unchecked);
        Enter(sheet, "Title", "Autumn Cup");
        Enter(sheet, "RaceFile", "R1");
        Enter(sheet, "Start", "2004/8/5 12:30");
        EXPECT_EQ(sheet.findChild<QListWidget*>("Unused")->count(), 1);
        Press(sheet, "Ok");
    });
    Drop(*program.TheMenu(), "stick");
    ASSERT_NE(program.TheDesk(), nullptr);
    RaceDisp& display = program.TheDesk()->session.Display();
    EXPECT_EQ(display.Caption(), " \"Keelview\" Race Browser   Autumn Cup   (R1.txt)");
    EXPECT_EQ(display.Bnam[0].Caption() + display.Text9.Text(), "Alcyone2004/08/05 12:30:00");
    EXPECT_EQ(app.tracks.Boats.Count(), 3);

    // A second drop, on the race that is shown: cancelled it stays, taken it gives way.
    for (const char* button : {"Cancel", "Ok"}) {
        WhenReady([&](QWidget& sheet) {
            Enter(sheet, "RaceFile", "R2");
            Press(sheet, button);
        });
        Drop(display, "stick");
        EXPECT_EQ(app.race.RaceFileName, button == std::string("Ok") ? "R2.txt" : "R1.txt");
    }
    EXPECT_EQ(tree.Files("gpsdat"), "x1.trk x2.trk x3.trk x4.trk ");
    display.Close();
    driver::Settle();
}

TEST_F(ImportTest, ALongReadingOfOneZipIsStoppedInTheWindowAndNothingIsTaken) {
    std::string track = "time,lat,lon\n";
    for (int second = 0; second < 4000; ++second)
        track += std::to_string(1791028800 + second) + ",35." + std::to_string(1000 + second) + ",139.5\n";
    tree.Write("all.zip", Zip(std::vector<ZipEntry>(400, {"a.csv", track})));
    QTimer::singleShot(0, qApp, [this] {  // while the sheet waits for its work
        auto* const stop = QApplication::activeModalWidget()->findChild<QPushButton*>("Stop");
        EXPECT_TRUE(stop->isVisible());
        QTest::mouseClick(stop, Qt::LeftButton);
        const auto seen = [stop](QWidget& sheet) {
            EXPECT_FALSE(stop->isVisible());
            EXPECT_EQ(Table(sheet).rowCount() + sheet.findChild<QListWidget*>("Unused")->count(), 0);
            Press(sheet, "Cancel");
        };
        WhenReady(seen, 0);
    });
    EXPECT_EQ(ImportSheet(app.settings, services).MakeRace({tree.Root() / "all.zip"}), "");
    EXPECT_EQ(Written(), "");
}

TEST_F(ImportTest, BoatsThatAreNotSavedInTheEditorOutliveARaceOfDroppedFiles) {
    tree.Write("raceadmin/Ver.00", "0,1");
    const StartOutcome outcome = SettleStart(app, services, true);
    Program program(app, services,
                    [](std::function<void()> task) { TheApplication().Later(std::move(task)); });
    program.Start(outcome);
    std::filesystem::create_directories(tree.Root() / "gpsdat");
    std::filesystem::copy_file(tree.Root() / "stick/x1.trk", tree.Root() / "gpsdat/mine.trk");
    driver::Click(program.TheMenu()->Command2);
    RaceEditor& editor = *program.TheEditor();
    driver::Click(editor.Command1);
    editor.Combo1.SetText("mine.trk");
    dialogs.AnswerInput("Mine");
    driver::Click(editor.Command2);
    ASSERT_EQ(editor.Draft().Boats.Count(), 1);
    WhenReady([&](QWidget& sheet) { Press(sheet, "Ok"); });
    Drop(editor, "stick");
    ASSERT_NE(program.TheDesk(), nullptr);
    EXPECT_FALSE(editor.Visible());
    program.TheDesk()->session.Display().Close();
    driver::Settle();
    EXPECT_TRUE(editor.Visible());
    EXPECT_EQ(editor.Draft().Boats.Count(), 1);
    for (const bool leaves : {false, true}) {
        dialogs.AnswerYesNo(leaves);
        driver::Click(editor.Command8);
        EXPECT_TRUE(dialogs.AllAnswered() && Said().find("not saved") != std::string::npos);
        EXPECT_EQ(program.TheEditor() == nullptr, leaves);
    }
}

TEST_F(ImportTest, WhatCannotBeWrittenIsToldAndLeavesNothing) {
    WhenReady([&](QWidget& sheet) {
        for (const auto& [field, text] : {std::pair{"Start", "no date"}, {"TimeDiff", "x"}}) {
            Enter(sheet, field, text);
            dialogs.AnswerOk();
            Press(sheet, "Ok");
            EXPECT_NE(Said().find(text), std::string::npos);
            Enter(sheet, field, field == std::string("Start") ? " " : "9");
        }
        std::filesystem::rename(tree.Root() / "stick/x3.trk", tree.Root() / "taken");
        dialogs.AnswerOk();
        Press(sheet, "Ok");
        EXPECT_NE(Said().find("x3.trk"), std::string::npos);
        EXPECT_EQ(Written(), "");
        std::filesystem::rename(tree.Root() / "taken", tree.Root() / "stick/x3.trk");
        Enter(sheet, "RaceFile", "mine.txt");
        tree.Write("raceadmin/mine.txt", "T1, Mine");
        dialogs.AnswerYesNo(false);
        Press(sheet, "Ok");
        EXPECT_EQ(tree.Read("raceadmin/mine.txt"), "T1, Mine");
        Press(sheet, "Cancel");
    });
    EXPECT_EQ(ImportSheet(app.settings, services).MakeRace({tree.Root() / "stick"}), "");
    EXPECT_TRUE(dialogs.AllAnswered());
    EXPECT_EQ(Written(), "mine.txt ");
}

/// A point of the chart where something can be taken hold of, as the pointer tells, from below or above.
QPoint GripOn(QWidget& chart, bool fromAbove) {
    for (int i = 0; i < chart.height(); i += 3)
        for (int x = 0; x < chart.width(); x += 3) {
            const QPoint at(x, fromAbove ? i : chart.height() - 1 - i);
            QTest::mouseMove(&chart, at);
            if (chart.cursor().shape() == Qt::OpenHandCursor) return at;
        }
    ADD_FAILURE() << "nothing to take hold of";
    return {};
}

void DragOn(QWidget& chart, const QPoint& from, const QPoint& to) {
    QTest::mousePress(&chart, Qt::LeftButton, {}, from);
    QTest::mouseMove(&chart, to);
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, to);
}

TEST_F(ImportTest, TheRaceThatWasFoundIsCorrectedOnTheChartAndTaken) {
    const SimulatedRegatta regatta({.Seed = 3, .Boats = 6});
    WriteRecordings(regatta, tree, "day/s");
    const std::string gun = DateTimeText(RaceTree::Start + regatta.Guns.front());
    const auto marks = static_cast<int>(regatta.Marks.size());
    for (const char* how : {"left", "taken", "corrected"}) {
        WhenReady([&](QWidget& sheet) {
            auto& chart = *sheet.findChild<QWidget*>("TrackChart");
            auto& take = *sheet.findChild<QCheckBox*>("TakeRace");
            auto& course = *sheet.findChild<QLineEdit*>("Course");
            auto& start = *sheet.findChild<QLineEdit*>("Start");
            EXPECT_TRUE(!take.isChecked() && start.text().isEmpty());
            EXPECT_EQ(sheet.findChild<QComboBox*>("WhichRace")->count(), 1);
            if (how == std::string("taken")) take.click();
            if (how == std::string("corrected")) {
                const QString before = course.text();
                const QPoint top = GripOn(chart, true);
                DragOn(chart, top, top + QPoint(0, 12));
                EXPECT_TRUE(take.isChecked() && course.text() == before);
                Press(sheet, "AddMark");
                QTest::mouseClick(&chart, Qt::LeftButton, {}, {5, chart.height() / 2});
                EXPECT_EQ(course.text().count(QString("MK%1").arg(marks + 1)), 1);
                QTest::mouseClick(&chart, Qt::RightButton, {}, {5, chart.height() / 2});
                EXPECT_EQ(course.text(), before);
                Enter(sheet, "Course", "L1 MK9");
                dialogs.AnswerOk();
                Press(sheet, "Ok");
                EXPECT_NE(Said().find("MK9"), std::string::npos);
                Enter(sheet, "Course", "l1 mk2 L1");
            }
            EXPECT_EQ(start.text().toStdString(), take.isChecked() ? gun : "");
            Enter(sheet, "RaceFile", how);
            Press(sheet, "Ok");
        });
        EXPECT_EQ(ImportSheet(app.settings, services).MakeRace({tree.Root() / "day"}),
                  how + std::string(".txt"));
        const std::string file = tree.Read("raceadmin/" + std::string(how) + ".txt");
        EXPECT_EQ(file.find("CRS, " + regatta.Course) != std::string::npos, how == std::string("taken"));
        EXPECT_EQ(file.find("CRS, L1, MK2, L1") != std::string::npos, how == std::string("corrected"));
        EXPECT_EQ(file.find("ST, " + gun) == std::string::npos, how == std::string("left"));
    }
    EXPECT_TRUE(dialogs.AllAnswered());
}

TEST_F(ImportTest, ACorrectedRaceOutlivesNewSearchesAndGoesWithTheClock) {
    const SimulatedRegatta regatta({.Seed = 3, .Boats = 6});
    WriteRecordings(regatta, tree, "day/s");
    const auto gunAt = [&](int hoursLater) {
        return DateTimeText(RaceTree::Start + regatta.Guns.front() + 3600 * hoursLater);
    };
    WhenReady([&](QWidget& sheet) {
        auto& chart = *sheet.findChild<QWidget*>("TrackChart");
        auto& course = *sheet.findChild<QLineEdit*>("Course");
        auto& start = *sheet.findChild<QLineEdit*>("Start");
        auto& asFound = *sheet.findChild<QPushButton*>("AsFound");
        const auto settled = [&] { return QTest::qWaitFor([&] { return !IsSearching(sheet); }, 20000); };
        const auto pressAt = [&](int x, int y) { QTest::mouseClick(&chart, Qt::LeftButton, {}, {x, y}); };
        // A second line is the finish; one that is begun and put away, or has no length, is none.
        Press(sheet, "AddLine");
        pressAt(20, 20);
        Press(sheet, "AddLine");
        Press(sheet, "AddLine");
        pressAt(20, 20);
        pressAt(22, 20);
        EXPECT_FALSE(asFound.isEnabled());
        pressAt(90, 20);
        EXPECT_TRUE(asFound.isEnabled() && course.text().endsWith(" L2")) << course.text().toStdString();
        // Neither another fleet nor another clock takes the correction away.
        Table(sheet).item(5, 0)->setCheckState(Qt::Unchecked);
        EXPECT_TRUE(settled() && course.text().endsWith(" L2"));
        EXPECT_EQ(start.text().toStdString(), gunAt(0));
        Enter(sheet, "TimeDiff", "7");
        EXPECT_TRUE(settled() && course.text().endsWith(" L2"));
        EXPECT_EQ(start.text().toStdString(), gunAt(-2));
        // By hand it goes again: an end of the line is taken hold of where it was put.
        Press(sheet, "Remove");
        pressAt(90, 20);
        EXPECT_FALSE(course.text().contains("L2"));
        asFound.click();
        EXPECT_FALSE(asFound.isEnabled());
        EXPECT_FALSE(course.text().isEmpty() || course.text().contains("L2"));
        EXPECT_EQ(start.text().toStdString(), gunAt(-2));
        Press(sheet, "Cancel");
    });
    EXPECT_EQ(ImportSheet(app.settings, services).MakeRace({tree.Root() / "day"}), "");
    EXPECT_EQ(Written(), "");
}

TEST_F(ImportTest, TheChartZoomsAndMovesUnderThePointerAndTheRaceWithIt) {
    WriteRecordings(SimulatedRegatta({.Seed = 3, .Boats = 6}), tree, "day/s");
    WhenReady([&](QWidget& sheet) {
        auto& chart = *sheet.findChild<QWidget*>("TrackChart");
        const auto isGrip = [&](const QPoint& at) {
            QTest::mouseMove(&chart, at);
            return chart.cursor().shape() == Qt::OpenHandCursor;
        };
        const QPoint top = GripOn(chart, true) + QPoint(0, 5);
        for (const int turn : {120, 120, -120}) {
            QWheelEvent wheel(top, chart.mapToGlobal(top), {}, {0, turn}, Qt::NoButton, {},
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(&chart, &wheel);
            EXPECT_TRUE(isGrip(top)) << turn;
        }
        const QPoint water(chart.width() - 5, chart.height() - 5);
        ASSERT_FALSE(isGrip(water));
        DragOn(chart, water, water - QPoint(60, 40));
        EXPECT_TRUE(!isGrip(top) && isGrip(top - QPoint(60, 40)));
        EXPECT_FALSE(sheet.findChild<QCheckBox*>("TakeRace")->isChecked())
            << "the race itself was not moved";
        Press(sheet, "Cancel");
    });
    ImportSheet(app.settings, services).MakeRace({tree.Root() / "day"});
}

TEST_F(ImportTest, EachRaceOfADayGetsAFileOfItsOwnOrNone) {
    const SimulatedRegatta regatta({.Seed = 5, .Boats = 8, .Races = 2, .Retire = 0});
    WriteRecordings(regatta, tree, "day/s");
    WhenReady([&](QWidget& sheet) {
        auto& which = *sheet.findChild<QComboBox*>("WhichRace");
        auto& all = *sheet.findChild<QCheckBox*>("AllRaces");
        ASSERT_EQ(which.count(), 2);
        EXPECT_TRUE(all.isVisible());
        which.setCurrentIndex(1);
        emit which.activated(1);
        all.click();
        Enter(sheet, "RaceFile", "Day");
        tree.Write("raceadmin/Day_1.txt", "T1, Mine");
        dialogs.AnswerYesNo(false);
        Press(sheet, "Ok");
        EXPECT_EQ(Written(), "Day_1.txt ");
        std::filesystem::remove(tree.Root() / "raceadmin/Day_1.txt");
        Press(sheet, "Ok");
    });
    EXPECT_EQ(ImportSheet(app.settings, services).MakeRace({tree.Root() / "day"}), "Day_2.txt");
    for (const int race : {0, 1}) {
        const std::string file = tree.Read("raceadmin/Day_" + std::to_string(race + 1) + ".txt");
        EXPECT_NE(file.find("ST, " + DateTimeText(RaceTree::Start + regatta.Guns.at(race))),
                  std::string::npos);
        EXPECT_NE(file.find("CRS, L1, MK1"), std::string::npos);
        EXPECT_NE(file.find(" R" + std::to_string(race + 1)), std::string::npos);
    }
    EXPECT_EQ(tree.Files("raceadmin"), "Day_1.txt Day_2.txt ");
}

TEST_F(ImportTest, TheSheetsLookAsEver) {
    for (const bool english : {true, false}) {
        app.settings.UseEnglish = english;
        WhenReady([&](QWidget& sheet) {
            ExpectLooksAsEver(sheet, english ? "import_en" : "import_ja");
            Press(sheet, "Cancel");
        });
        ImportSheet(app.settings, services).MakeRace({tree.Root() / "stick"});
        WindSheet wind(app.settings, services);
        wind.show();
        wind.Take("12:30,8,210\n12:31,9.5,215\n");
        ExpectLooksAsEver(wind, english ? "wind_sheet_en" : "wind_sheet_ja");
    }
}

TEST_F(ImportTest, WindIsTypedPastedAndReadAndBecomesAFile) {
    tree.Write("station.csv", "Date;UTC;TWD;TWS (m/s)\n2026-10-03;03:30:00Z;201,5;5\nx;y;z\n");
    WindSheet sheet(app.settings, services);
    sheet.show();
    for (const auto& [field, text] : {std::pair{"Day", "2026/10/03"}, {"TimeDiff", "9"}, {"FileName", "w"}})
        Enter(sheet, field, text);
    dialogs.AnswerFiles({tree.Root() / "station.csv"});
    dialogs.AnswerOk();  // a line was left out
    Press(sheet, "Read");
    QApplication::clipboard()->setText("12:31\t8\t210\n12:29\t\t190\n");
    Press(sheet, "Paste");
    QTableWidget& table = Table(sheet);
    for (const auto& [column, text] : {std::pair{0, "12:45:30"}, {1, "9"}, {2, "220"}})
        table.setItem(5, column, new QTableWidgetItem(text));
    Press(sheet, "Ok");
    EXPECT_TRUE(dialogs.AllAnswered() && !sheet.isVisible());
    EXPECT_EQ(
        tree.Read("winddat/w.csv"),
        "TIME,WIND SPEED,WIND DIRECTION (Mag)\r\n2026/10/03 12:29:00,,190\r\n"
        "2026/10/03 12:30:00,9.72,201.5\r\n2026/10/03 12:31:00,8,210\r\n2026/10/03 12:45:30,9,220\r\n");
}

}  // namespace
}  // namespace keelview
