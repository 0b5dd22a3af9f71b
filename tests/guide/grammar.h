// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the grammar of the data file's page, so that a test can hold it against the
// program. A rule a line:
//
//     record = amount "," date end       names of other rules and quoted texts, one
//                                        behind the other
//     amount = "-"? digits ( "." digits )?      "?" at most once, "*" any number of
//                                        times, "+" once or more, "{4}" so many times,
//                                        "{1,4}" from so many to so many
//     name   = ( "a" | "b" ) [^"]*       "|" either, "[...]" one of these characters
#pragma once

#include <QRegularExpression>
#include <QStringList>

namespace mirelund::testing {

/// What matches exactly the texts of the first rule. An unknown name gives an invalid one.
QRegularExpression recognizer(const QStringList& rules);

}  // namespace mirelund::testing
