// SPDX-License-Identifier: GPL-3.0-or-later
// Core's text and the toolkit's: converted here and nowhere else.
#pragma once

#include <QFile>
#include <QString>
#include <string>
#include <string_view>

namespace mirelund {

inline QString toQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string toStdString(const QString& text) {
  return text.toStdString();
}

/// A path as the file system has it: bytes.
inline std::string toPathBytes(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

inline QString fromPathBytes(const std::string& bytes) {
  return QFile::decodeName(QByteArray::fromStdString(bytes));
}

}  // namespace mirelund
