// SPDX-License-Identifier: GPL-3.0-or-later
#include "manager/short_date.h"

#include <QDate>

#include "base/ui_text.h"

namespace mirelund {

QLocale dateLocale() {
  // Not the toolkit's system locale: that follows LANG where dates follow LC_TIME.
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"})
    if (const QByteArray value = qgetenv(variable); !value.isEmpty())
      return QLocale(QString::fromLocal8Bit(value));
  return QLocale::c();
}

ShortDateFormat shortDateFormat(const QLocale& locale) {
  if (locale.language() == QLocale::C) return shortDateFormat("MM/dd/yyyy");
  return shortDateFormat(toStdString(locale.dateFormat(QLocale::ShortFormat)));
}

Date today() {
  const QDate now = QDate::currentDate();
  return Date::of(now.year(), now.month(), now.day()).value_or(Date());
}

}  // namespace mirelund
