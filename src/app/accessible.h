// SPDX-License-Identifier: GPL-3.0-or-later
// What a screen reader is told where the toolkit knows too little.
#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace mirelund {

/// For the whole program, once: windows are frames, and results (app/result_label.h)
/// are read-only texts with their values.
void installAccessibility();

/// Says `text` to a person who listens, whatever has the focus; nothing where nobody
/// does. `about` is the control that it is about.
void announce(QWidget* about, const QString& text);

/// What was announced of a control: before 6.8 the toolkit has no event that says a
/// text, but a notification that is shown is read.
class Announcement : public QObject {
  Q_OBJECT

 public:
  explicit Announcement(QWidget* about);

  QWidget* about() const;
  const QString& text() const { return text_; }
  void setText(const QString& text) { text_ = text; }

 private:
  QString text_;
};

}  // namespace mirelund
