#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <string>
#include <string_view>

#include "racedata/wind_table.h"
#include "session/app_state.h"
#include "session/voice.h"

namespace keelview {

/// The sheet that makes a wind file: time, speed and direction, typed, pasted, or read from a table that
/// something else wrote. Nothing is written until OK.
class WindSheet : public QDialog {
  public:
    WindSheet(const Settings& settings, Services& services);

    /// Takes the readings of a table behind those that are there, in the order of time.
    void Take(std::string_view table);

  private:
    void LayOut();
    void ReadFile();
    void Paste();
    void Show(const std::vector<WindRow>& rows);
    WindTable Rows() const;
    double TimeDiff() const;
    void Ok_Clicked();

    void keyPressEvent(QKeyEvent* event) override;

    const Settings& settings_;
    Services& services_;
    Voice voice_;
    QLineEdit* name_ = nullptr;
    QLineEdit* day_ = nullptr;
    QLineEdit* timeDiff_ = nullptr;
    QTableWidget* table_ = nullptr;
};

}  // namespace keelview
