// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/short_names.h"

#include <QSet>

namespace mirelund {

namespace {

constexpr QChar kEllipsis(0x2026);

// `headShare` of what fits is of the name's beginning, the rest of its end.
QString shortened(const QString& name, const QFontMetricsF& metrics, double width,
                  double headShare) {
  // A name of thousands of characters need not be measured to its end.
  const auto most = static_cast<qsizetype>(4.0 * width / metrics.averageCharWidth()) + 8;
  if (name.size() <= most && metrics.horizontalAdvance(name) <= width) return name;
  const double dots = metrics.horizontalAdvance(kEllipsis);
  const double room = width - dots;
  const auto elided = [&](const QString& part, Qt::TextElideMode mode, double share) {
    return metrics.elidedText(part, mode, share * room + dots).remove(kEllipsis);
  };
  return elided(name.left(most), Qt::ElideRight, headShare) + kEllipsis +
         elided(name.right(most), Qt::ElideLeft, 1.0 - headShare);
}

}  // namespace

QStringList shortNames(const QStringList& names, const QFontMetricsF& metrics,
                       const std::vector<double>& widths) {
  const qsizetype wanted = QSet<QString>(names.begin(), names.end()).size();
  QStringList best;
  qsizetype mostApart = 0;
  for (const double headShare : {0.5, 0.3, 0.7, 0.15, 0.85, 0.0, 1.0}) {
    QStringList tried;
    for (qsizetype i = 0; i < names.size(); ++i)
      tried << shortened(names[i], metrics, widths.at(static_cast<std::size_t>(i)), headShare);
    const qsizetype apart = QSet<QString>(tried.begin(), tried.end()).size();
    if (apart <= mostApart) continue;
    mostApart = apart;
    best = tried;
    if (apart == wanted) break;
  }
  return best;
}

QStringList shortNames(const QStringList& names, const QFontMetricsF& metrics, double width) {
  return shortNames(names, metrics,
                    std::vector<double>(static_cast<std::size_t>(names.size()), width));
}

}  // namespace mirelund
