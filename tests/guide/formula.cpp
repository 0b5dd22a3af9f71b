// SPDX-License-Identifier: GPL-3.0-or-later
#include "guide/formula.h"

#include <cmath>

namespace mirelund::testing {

namespace {

qsizetype length(const char* word) {
  return static_cast<qsizetype>(qstrlen(word));
}

class Reader {
 public:
  Reader(QString text, const Quantities& known) : text_(std::move(text)), known_(known) {}

  double all() {
    const double value = sum();
    if (!rest().isEmpty()) fail("not understood");
    return value;
  }

 private:
  [[noreturn]] void fail(const QString& why) { throw BadFormula(why + ": " + text_.mid(at_)); }

  QStringView rest() {
    while (true) {
      while (at_ < text_.size() && text_[at_].isSpace()) ++at_;
      bool blank = false;
      for (const char* space : {"\\,", "\\;", "\\quad"})
        if (QStringView(text_).mid(at_).startsWith(QLatin1String(space))) {
          at_ += length(space);
          blank = true;
        }
      if (!blank) return QStringView(text_).mid(at_);
    }
  }
  bool sees(const char* word) { return rest().startsWith(QLatin1String(word)); }
  bool skip(const char* word) {
    if (!sees(word)) return false;
    at_ += length(word);
    return true;
  }
  void need(const char* word) {
    if (!skip(word)) fail(QString("no ") + word);
  }

  double sum() {
    double value = product();
    while (true) {
      if (skip("+"))
        value += product();
      else if (skip("-"))
        value -= product();
      else
        return value;
    }
  }

  double product() {
    if (skip("-")) return -product();
    double value = power();
    while (true) {
      if (skip("/"))
        value /= power();
      else if (skip("\\cdot") || skip("\\times") || beginsFactor())
        value *= power();
      else
        return value;
    }
  }

  bool beginsFactor() {
    const QStringView next = rest();
    if (next.isEmpty()) return false;
    const QChar first = next.front();
    if (first == '\\') return !sees("\\right") && !sees("\\rfloor");
    return first.isLetterOrNumber() || first == '(' || first == '{' || first == '.';
  }

  double power() {
    const double base = factor();
    return skip("^") ? std::pow(base, group()) : base;
  }

  double group() {
    if (!sees("{")) {
      const QChar one = rest().isEmpty() ? QChar() : rest().front();
      if (!one.isDigit()) return factor();
      ++at_;
      return one.digitValue();
    }
    need("{");
    const double value = sum();
    need("}");
    return value;
  }

  double bracket(const char* close) {
    const double value = sum();
    need(close);
    return value;
  }

  double factor() {
    if (skip("\\left(")) return bracket("\\right)");
    if (skip("(")) return bracket(")");
    if (sees("{")) return group();
    if (skip("\\lfloor")) return std::floor(bracket("\\rfloor"));
    if (skip("\\ln")) return std::log(factor());
    if (skip("\\frac")) {
      const double above = group();
      return above / group();
    }
    const QStringView next = rest();
    if (next.isEmpty()) fail("nothing more");
    return next.front().isDigit() || next.front() == '.' ? number() : quantity();
  }

  double number() {
    const auto from = at_;
    while (at_ < text_.size() && (text_[at_].isDigit() || text_[at_] == '.')) ++at_;
    bool good = false;
    const double value = text_.mid(from, at_ - from).toDouble(&good);
    if (!good) fail("no number");
    return value;
  }

  double quantity() {
    const auto from = at_;
    if (skip("\\text{")) {
      at_ = text_.indexOf('}', at_) + 1;
      if (at_ == 0) fail("no }");
    } else {
      const bool command = text_[at_] == '\\';
      if (!command && !text_[at_].isLetter()) fail("not understood");
      ++at_;
      while (command && at_ < text_.size() && text_[at_].isLetter()) ++at_;
    }
    while (at_ < text_.size() && text_[at_] == '\'') ++at_;
    if (at_ < text_.size() && text_[at_] == '_') {
      const bool braces = at_ + 1 < text_.size() && text_[at_ + 1] == '{';
      at_ = braces ? text_.indexOf('}', at_) + 1 : at_ + 2;
      if (at_ == 0 || at_ > text_.size()) fail("no }");
    }
    const QString name = text_.mid(from, at_ - from);
    if (!known_.contains(name)) throw BadFormula("unknown: " + name);
    return known_.value(name);
  }

  QString text_;
  const Quantities& known_;
  qsizetype at_ = 0;
};

}  // namespace

double valueOf(const QString& formula, const Quantities& known) {
  const double value = Reader(formula, known).all();
  if (!std::isfinite(value)) throw BadFormula("no finite value: " + formula);
  return value;
}

}  // namespace mirelund::testing
