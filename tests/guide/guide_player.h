// SPDX-License-Identifier: GPL-3.0-or-later
// Does what an inputs block of the guide tells the reader to do, by mouse and keys, in
// the windows of the program:
//
//     Open Calculations, Compound gain       a window and a tab; the tab starts afresh
//     Open Payment schedule                  the window of a command of the menus, which has
//                                            what follows; at the block's end it is looked
//                                            at and closed
//     Open Insights, Gains                   of what the manager has open
//     Number of years invested: 5            into the box, or from the list, of this label
//     Click Calculate                        a button or an option by its caption
//     Choose Export                          a command of the menus, by its key
//     Double-click Meadow Balanced Fund      a line of the list of funds
//     Answer Harbour Light & Power           what a dialog of the click before is told:
//     Answer Yes                             a line, Yes or No, a number, a file's name
//     Message Maximum comparisons 10.        what the program has told since
#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <optional>
#include <stdexcept>

#include "guide/guide_page.h"
#include "ui_testing.h"

namespace mirelund::testing {

class NotDone : public std::runtime_error {
 public:
  explicit NotDone(const QString& why) : std::runtime_error(why.toStdString()) {}
};

/// One program and a folder for its files, in which the sample database lies.
class GuidePlayer {
 public:
  explicit GuidePlayer(const QString& sample);

  /// Throws NotDone where a person could not do it, or is told something unsaid.
  void play(const QStringList& lines);

  /// Whatever was told or is still to be answered.
  void forget();

  /// The text of the report box in view, or of the window that was closed last in the
  /// same block.
  QString report() const;
  /// The file that was named last; empty where there is none.
  QByteArray fileBytes() const;
  /// The window in use, or the one that was closed; its chart where the picture's name
  /// begins with "chart-".
  QImage picture(const QString& name);

 private:
  void open(const QString& what);
  void openInsights();
  void closeInsights();
  void openWindow(const QString& name, const char* objectName, const char* button);
  void chooseTab(const QString& caption);
  void enter(const QString& label, const QString& value);
  void choose(QComboBox* list, const QString& item);
  void clickOn(QWidget* control);
  void doubleClick(const QString& item);
  void click(const QString& caption);
  void command(const QString& caption);
  void openAnd(const QString& command, const QStringList& lines);
  void playLines(const QStringList& lines);
  void answer(const QString& text);
  void answersBehind(const QStringList& lines, qsizetype at);
  void expectMessage(const QString& text);
  void settle();
  QAbstractButton* button(const QString& caption) const;
  template <typename Widget>
  QList<Widget*> shown() const;

  ProgramFixture program_;
  QTemporaryDir folder_;
  QPointer<QWidget> window_;
  QString file_;
  /// Of the window that a command has opened and that is closed again.
  struct Closed {
    QString report;
    QImage window;
    QImage chart;
  };
  std::optional<Closed> closed_;
};

/// What a picture was taken of: each control with its text and, in hundredths of the
/// window, its place. It goes with the picture as a text of this name.
inline constexpr const char* kPictureContent = "Content";
/// Nothing where two contents tell of the same controls and texts in nearly the same
/// places; else what differs.
QString contentDifference(const QString& one, const QString& other);

}  // namespace mirelund::testing
