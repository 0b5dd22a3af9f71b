// SPDX-License-Identifier: GPL-3.0-or-later
// A page of the guide as its test reads it. Beside prose a page holds, in Markdown:
//
//     ```inputs            what a person does, a line each (guide_player.h)
//     ```report            the report that is shown then; "..." stands for any lines
//     ```file              the file that was saved last, whole
//     ```grammar           how a data file is written (grammar.h)
//     ![What it is](images/NAME.png)      the window at this moment
//     $$ a = \ldots $$                    a formula (formula.h)
//     <!-- inputs          done as well, and not seen by the reader, up to
//     -->
//     <!-- check           what is not shown, a line each:
//     let C = 10000        a quantity; its numbers (but 100) stand in the blocks above
//     solve a              the formula of a, worked out
//     report 100 a = 14.87       this comes to 14.87, which stands in a block
//     hand V - C = 10000         this comes to 10000, which the prose may say
//     program most years = 40    the program's own limit, which the prose may say
//     -->
//
// Every number of the prose must stand in an inputs, report or file block, in a formula
// or in a check, but for the 100 of percentages; every formula must be solved.
#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include "guide/formula.h"

namespace mirelund::testing {

enum class BlockKind { Inputs, Report, File, Grammar, Picture };

struct GuideBlock {
  BlockKind kind;
  QString name;  ///< a picture's
  QStringList lines;
  int line = 0;  ///< of the page
};

struct GuidePage {
  /// Throws BadPage where the page cannot be read.
  GuidePage(QString name, const QString& markdown);

  /// What is wrong with the numbers, a line each; nothing where all is well. `limits`
  /// are the program's by name.
  QStringList faults(const Quantities& limits) const;

  struct Line {
    QString text;
    int number;
  };

  QString name;
  QList<GuideBlock> blocks;
  QList<Line> prose;
  QList<Line> checks;
  QMap<QString, QString> formulas;  ///< by what stands left of the "="
};

class BadPage : public std::runtime_error {
 public:
  explicit BadPage(const QString& why) : std::runtime_error(why.toStdString()) {}
};

/// The numbers of a text as they are written.
QStringList numbersIn(const QString& text);

/// Nothing where `shown` is what the block says, else the first line that is not.
QString difference(const QStringList& expected, const QString& shown);

}  // namespace mirelund::testing
