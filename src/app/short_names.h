// SPDX-License-Identifier: GPL-3.0-or-later
// Names in places that may be too small for them.
#pragma once

#include <QFontMetricsF>
#include <QStringList>
#include <vector>

namespace mirelund {

/// Each name as it fits into its width: itself where there is room, else shortened in
/// its middle ("Alder Growth…2040"). All are cut at one place, the nearest to their
/// middles at which names that differ stay apart, or most of them do.
QStringList shortNames(const QStringList& names, const QFontMetricsF& metrics,
                       const std::vector<double>& widths);

/// The same, into one width for all.
QStringList shortNames(const QStringList& names, const QFontMetricsF& metrics, double width);

}  // namespace mirelund
