// SPDX-License-Identifier: GPL-3.0-or-later
// Bars that are filled with lines, where their colour alone would not tell them apart.
#pragma once

#include <qcustomplot.h>

#include "charts/bar_colors.h"

namespace mirelund {

/// The brush's colour fills a solid bar and draws a hatched one's lines, on the ground.
/// Each line is drawn by itself and within its bar, so that it stays a line on paper and
/// in files of vectors, where not everything knows patterns and clipping.
class HatchedBars : public QCPBars {
  Q_OBJECT

 public:
  HatchedBars(QCPAxis* keyAxis, QCPAxis* valueAxis, BarFill fill)
      : QCPBars(keyAxis, valueAxis), fill_(fill) {}

  BarFill fill() const { return fill_; }

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

 private:
  void drawBar(QCPPainter* painter, const QRectF& bar) const;

  BarFill fill_;
};

}  // namespace mirelund
