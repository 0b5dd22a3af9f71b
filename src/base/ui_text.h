// SPDX-License-Identifier: GPL-3.0-or-later
// Core's text and the toolkit's: converted here and nowhere else.
#pragma once

#include <QFile>
#include <QString>
#include <QWidget>
#include <string>
#include <string_view>

namespace mirelund {

inline QString toQString(std::string_view text) {
  QString out = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  // A name may begin with a byte order mark, which the toolkit drops.
  if (text.starts_with("\xEF\xBB\xBF")) out.prepend(QChar(QChar::ByteOrderMark));
  return out;
}

inline std::string toStdString(const QString& text) {
  return text.toStdString();
}

/// A tooltip that shows the text as it is: tooltips guess what is markup.
inline QString plainToolTip(const QString& text) {
  return text.isEmpty() ? text : "<span>" + text.toHtmlEscaped() + "</span>";
}

/// Gives a control such a tooltip. A screen reader, to which a tooltip is the control's
/// description, gets the text without markup.
inline void setPlainToolTip(QWidget* control, const QString& text) {
  control->setToolTip(plainToolTip(text));
  control->setAccessibleDescription(text);
}

/// A path as the file system has it: bytes.
inline std::string toPathBytes(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

inline QString fromPathBytes(const std::string& bytes) {
  return QFile::decodeName(QByteArray::fromStdString(bytes));
}

}  // namespace mirelund
