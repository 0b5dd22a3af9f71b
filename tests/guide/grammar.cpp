// SPDX-License-Identifier: GPL-3.0-or-later
#include "guide/grammar.h"

#include <QMap>

namespace mirelund::testing {

namespace {

class Translator {
 public:
  explicit Translator(const QStringList& rules) {
    for (const QString& rule : rules) {
      const auto equals = rule.indexOf(" = ");
      if (equals < 0) continue;
      const QString name = rule.left(equals).trimmed();
      if (first.isEmpty()) first = name;
      rules_[name] = rule.mid(equals + 3);
    }
  }

  QString pattern(const QString& name, int depth = 0) const {
    constexpr int kDeepest = 12;
    if (!rules_.contains(name) || depth > kDeepest) return "(";  // matches nothing: invalid
    static const QRegularExpression kPart("\"([^\"]*)\"|(\\[[^\\]]*\\])|([a-z][a-z-]*)|(\\S)");
    QString whole;
    static const QRegularExpression kCount("^\\{\\d+(?:,\\d+)?\\}");
    QString rest = rules_[name];
    while (true) {
      rest = rest.trimmed();
      if (rest.isEmpty()) return "(?:" + whole + ")";
      if (const auto count = kCount.match(rest); count.hasMatch()) {
        whole += count.captured();
        rest = rest.mid(count.capturedLength());
        continue;
      }
      const auto part = kPart.match(rest);
      if (part.hasCaptured(1))
        whole += "(?:" + QRegularExpression::escape(part.captured(1)) + ")";
      else if (part.hasCaptured(3))
        whole += pattern(part.captured(3), depth + 1);
      else
        whole += part.captured();
      rest = rest.mid(part.capturedLength());
    }
  }

  QString first;

 private:
  QMap<QString, QString> rules_;
};

}  // namespace

QRegularExpression recognizer(const QStringList& rules) {
  const Translator translator(rules);
  return QRegularExpression("\\A" + translator.pattern(translator.first) + "\\z",
                            QRegularExpression::DotMatchesEverythingOption);
}

}  // namespace mirelund::testing
