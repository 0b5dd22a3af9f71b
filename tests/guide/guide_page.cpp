// SPDX-License-Identifier: GPL-3.0-or-later
#include "guide/guide_page.h"

#include <QRegularExpression>
#include <QSet>
#include <cmath>
#include <functional>

namespace mirelund::testing {

namespace {

using Line = GuidePage::Line;

double amount(QString number) {
  return number.remove(',').toDouble();
}

// Half of the last place that is written.
double precision(const QString& number) {
  const auto point = number.indexOf('.');
  const auto decimals = point < 0 ? 0 : number.size() - point - 1;
  return 0.5 * std::pow(10.0, -static_cast<double>(decimals)) * (1 + 1e-6);
}

// What a reader sees of a line of Markdown, but for marks.
QString seen(QString line) {
  static const QRegularExpression kTarget("\\]\\([^)]*\\)");
  static const QRegularExpression kListNumber("^\\s*\\d+\\.\\s");
  static const QRegularExpression kKeys("`(?:Ctrl|Alt|Shift)\\+[^`]*`");
  return line.remove(kListNumber)
      .remove(kKeys)
      .remove("UTF-8")
      .replace(kTarget, "]")
      .replace("\\$", "$");
}

// The lines of a page, block by block.
class PageReader {
 public:
  PageReader(GuidePage& page, const QString& markdown)
      : page_(page), lines_(markdown.split('\n')) {}

  void readAll() {
    while (at_ < lines_.size()) {
      const QString& line = lines_[at_];
      if (line.startsWith("```"))
        fence();
      else if (line == "<!-- inputs")
        unseenInputs();
      else if (line.startsWith("<!-- check"))
        gather("-->", [this](const Line& check) { page_.checks << check; });
      else if (line.startsWith("$$"))
        formula();
      else
        text();
    }
  }

 private:
  template <typename Keep>
  void gather(const char* end, Keep keep) {
    const auto from = at_;
    while (++at_ < lines_.size() && lines_[at_] != QLatin1String(end))
      if (!lines_[at_].trimmed().isEmpty()) keep(Line{lines_[at_], static_cast<int>(at_) + 1});
    if (at_++ >= lines_.size()) fail("not ended", from);
  }

  void unseenInputs() {
    GuideBlock block{BlockKind::Inputs, {}, {}, static_cast<int>(at_) + 1};
    gather("-->", [&block](const Line& line) { block.lines << line.text; });
    page_.blocks << block;
  }

  void fence() {
    const auto from = at_;
    const QString word = lines_[at_].mid(3);
    const QMap<QString, BlockKind> kinds = {{"inputs", BlockKind::Inputs},
                                            {"report", BlockKind::Report},
                                            {"file", BlockKind::File},
                                            {"grammar", BlockKind::Grammar}};
    if (!kinds.contains(word)) fail("a block of no kind", from);
    GuideBlock block{kinds[word], {}, {}, static_cast<int>(from) + 1};
    while (++at_ < lines_.size() && lines_[at_] != "```") block.lines << lines_[at_];
    if (at_++ >= lines_.size()) fail("not ended", from);
    page_.blocks << block;
  }

  void formula() {
    const auto from = at_;
    QString text = lines_[at_].mid(2);
    while (!text.endsWith("$$") && ++at_ < lines_.size()) text += ' ' + lines_[at_];
    if (at_++ >= lines_.size()) fail("not ended", from);
    text.chop(2);
    text = text.trimmed();
    while (text.endsWith(',') || text.endsWith('.')) text.chop(1);
    const auto equals = text.indexOf('=');
    const QString left = text.left(equals).trimmed();
    if (equals < 0 || page_.formulas.contains(left)) fail("a formula of nothing new", from);
    page_.formulas[left] = text.mid(equals + 1);
  }

  void text() {
    static const QRegularExpression kPicture("!\\[[^\\]]*\\]\\(images/([^)]*)\\.png\\)");
    const int number = static_cast<int>(at_) + 1;
    const QString& line = lines_[at_++];
    if (const auto picture = kPicture.match(line); picture.hasMatch())
      page_.blocks << GuideBlock{BlockKind::Picture, picture.captured(1), {}, number};
    page_.prose << Line{seen(line), number};
  }

  [[noreturn]] void fail(const QString& why, qsizetype at) const {
    throw BadPage(QString("%1:%2: %3").arg(page_.name).arg(at + 1).arg(why));
  }

  GuidePage& page_;
  const QStringList lines_;
  qsizetype at_ = 0;
};

// Works out the checks and finds what nothing stands for.
class Accountant {
 public:
  Accountant(const GuidePage& page, const Quantities& limits) : page_(page), limits_(limits) {
    for (const GuideBlock& block : page.blocks)
      if (block.kind != BlockKind::Grammar)
        for (const QString& line : block.lines)
          for (const QString& number : numbersIn(line)) played_ << amount(number);
    for (const QString& limit : limits.keys()) known_["\\text{" + limit + '}'] = limits[limit];
  }

  QStringList faults() {
    for (const Line& check : page_.checks) {
      try {
        follow(check);
      } catch (const BadFormula& bad) {
        fault(check, bad.what());
      }
    }
    for (const QString& left : page_.formulas.keys())
      if (!solved_.contains(left)) faults_ << page_.name + ": never solved: " + left;
    for (const Line& line : page_.prose)
      for (const QString& number : numbersIn(line.text))
        if (amount(number) != kPercent && !played_.contains(amount(number)) &&
            !said_.contains(amount(number)))
          fault(line, "nothing stands for " + number);
    return faults_;
  }

 private:
  static constexpr double kPercent = 100;

  void follow(const Line& check) {
    const QString word = check.text.section(' ', 0, 0);
    const QString rest = check.text.section(' ', 1).trimmed();
    const QString left = rest.section(" = ", 0, 0).trimmed();
    const QString right = rest.section(" = ", 1).trimmed();
    if (word == "let") {
      for (const QString& number : numbersIn(right))
        if (amount(number) != kPercent && !played_.contains(amount(number)))
          fault(check, "no block says " + number);
      known_[left] = valueOf(right, known_);
    } else if (word == "solve") {
      if (!page_.formulas.contains(rest)) return fault(check, "no formula of " + rest);
      known_[rest] = valueOf(page_.formulas[rest], known_);
      solved_ << rest;
      for (const QString& number : numbersIn(page_.formulas[rest])) said_ << amount(number);
    } else if (word == "report" || word == "hand") {
      if (word == "report" && !played_.contains(amount(right)))
        fault(check, "no block says " + right);
      if (numbersIn(left) == QStringList{left}) fault(check, "says itself");
      agree(check, valueOf(left, known_), right);
    } else if (word == "program") {
      if (!limits_.contains(left)) return fault(check, "the program has no " + left);
      agree(check, limits_[left], right);
    } else {
      fault(check, "not understood");
    }
  }

  void agree(const Line& check, double value, const QString& number) {
    if (numbersIn(number) != QStringList{number} ||
        std::abs(value - amount(number)) > precision(number))
      return fault(check, "comes to " + QString::number(value, 'f', 6));
    said_ << amount(number);
  }

  void fault(const Line& line, const QString& what) {
    faults_ << QString("%1:%2: %3 (%4)").arg(page_.name).arg(line.number).arg(what, line.text);
  }

  const GuidePage& page_;
  const Quantities& limits_;
  Quantities known_;
  QSet<double> played_;
  QSet<double> said_;
  QSet<QString> solved_;
  QStringList faults_;
};

QString withoutEnd(QString line) {
  while (line.endsWith(' ') || line.endsWith('\r')) line.chop(1);
  return line;
}

}  // namespace

GuidePage::GuidePage(QString pageName, const QString& markdown) : name(std::move(pageName)) {
  PageReader(*this, markdown).readAll();
}

QStringList GuidePage::faults(const Quantities& limits) const {
  return Accountant(*this, limits).faults();
}

QStringList numbersIn(const QString& text) {
  static const QRegularExpression kNumber(
      "(?<![A-Za-z0-9_.])(?:\\d{1,3}(?:,\\d{3})+|\\d+)?(?:\\.\\d+|(?<=\\d))(?![A-Za-z0-9])");
  QStringList found;
  for (auto match = kNumber.globalMatch(text); match.hasNext();) {
    const QString number = match.next().captured();
    if (!number.isEmpty()) found << number;
  }
  return found;
}

QString difference(const QStringList& expected, const QString& shown) {
  QStringList lines;
  for (const QString& line : shown.split('\n')) lines << withoutEnd(line);
  while (!lines.isEmpty() && lines.back().isEmpty()) lines.removeLast();
  QList<QStringList> chunks;
  chunks.append(QStringList());
  for (const QString& line : expected) {
    if (line == "...")
      chunks.append(QStringList());
    else
      chunks.back() << withoutEnd(line);
  }
  qsizetype at = 0;
  for (qsizetype i = 0; i < chunks.size(); ++i) {
    const QStringList& chunk = chunks[i];
    const bool isLast = i + 1 == chunks.size();
    // The first stands at the beginning, the last at the end, unless "..." is there.
    const qsizetype last = i == 0 ? 0 : lines.size() - chunk.size();
    if (isLast && i > 0 && !chunk.isEmpty()) at = std::max(at, last);
    while (at < last && lines.mid(at, chunk.size()) != chunk) ++at;
    for (const QString& line : chunk) {
      const QString is = lines.value(at++, "(no more)");
      if (is != line) return QString("shown: %1\nsaid:  %2").arg(is, line);
    }
    if (isLast && !chunk.isEmpty() && at < lines.size()) return "not said: " + lines[at];
  }
  return {};
}

}  // namespace mirelund::testing
