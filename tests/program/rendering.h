// SPDX-License-Identifier: GPL-3.0-or-later
// What a person sees of a window, measured: is each text whole, and do texts and focus
// marks stand out from what is behind them?
#pragma once

#include <QImage>
#include <QList>
#include <QRect>
#include <QStringList>

class QWidget;

namespace mirelund::testing {

/// How much brighter one colour is than another, 1 to 21, as the Web Content
/// Accessibility Guidelines 2.2 count it (relative luminance, gamma of sRGB).
double contrast(QRgb one, QRgb other);

inline constexpr double kTextContrast = 4.5;
inline constexpr double kMarkContrast = 3.0;

/// One text that a control shows.
struct ShownTextPlace {
  QString text;
  QRect room;    ///< what the control's style leaves it, in the control's coordinates
  QSize asked;   ///< what the font's metrics ask for
  QString part;  ///< of a control of several texts
  Qt::Alignment alignment = Qt::AlignCenter;
  /// A label's and a box's text stands by its own direction, another by the desktop's.
  bool byOwnDirection = false;
};

/// A part of a window as it is drawn, in the window's coordinates.
struct Picture {
  QRect part;
  QImage pixels;

  /// The pixels of a rectangle of the window.
  QRect pixelsOf(QRect place) const;
};

Picture pictureOf(QWidget* window, QRect part);
Picture pictureOf(QWidget* window);
/// The surroundings of a control within its window.
QRect around(const QWidget* control);

/// The texts of one control, without those of its children; none for a control that
/// scrolls or wraps whatever is longer.
QList<ShownTextPlace> textsOf(const QWidget* control);

/// What cuts texts in a window: less room than they ask for, by themselves or because
/// something around the control ends before it; and controls that lie over each other.
/// What a scroll area can bring into view is not cut.
QStringList cutTexts(QWidget* window);

/// Texts that a window, as `picture` shows it, does not set off from their ground. Those
/// of controls that are off are not looked at.
QStringList faintTexts(QWidget* window, const Picture& picture);

/// The same for the texts of one control, and the items of a list or the lines of a report.
QStringList faintTextsOf(const QWidget* control, const Picture& picture);

/// What is wrong with the focus mark of a control that is shown with and without it: too few
/// of its pixels differ enough. Empty when all is well.
QString faintMark(const QWidget* control, const Picture& without, const Picture& with);

}  // namespace mirelund::testing
