// SPDX-License-Identifier: GPL-3.0-or-later
#include "charts/chart_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <vector>

#include "charts/bar_chart_widget.h"

namespace mirelund {

namespace {

// One bar. It outlives neither its chart's interface nor, in what it says, the view.
class SaidBar : public QAccessibleInterface {
 public:
  SaidBar(BarChart* chart, int bar) : chart_(chart), bar_(bar) {}

  bool isValid() const override { return chart_ != nullptr && bar_ < chart_->barCount(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override {
    return isValid() ? chart_->window()->windowHandle() : nullptr;
  }
  QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(chart_);
  }
  QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

  QString text(QAccessible::Text asked) const override {
    return isValid() && asked == QAccessible::Name ? chart_->textOfBar(bar_) : QString();
  }
  void setText(QAccessible::Text /*asked*/, const QString& /*text*/) override {}
  QRect rect() const override {
    if (!isValid()) return {};
    const QRect drawn = chart_->rectOfBar(bar_);
    return {chart_->mapToGlobal(drawn.topLeft()), drawn.size()};
  }
  QAccessible::Role role() const override { return QAccessible::ListItem; }
  QAccessible::State state() const override {
    QAccessible::State state;
    state.readOnly = true;
    state.focusable = true;
    state.selectable = true;
    state.invalid = !isValid();
    state.selected = isValid() && chart_->chosenBar() == bar_;
    state.focused = state.selected && chart_->hasFocus();
    return state;
  }

 private:
  QPointer<BarChart> chart_;
  int bar_;
};

class SaidChart : public QAccessibleWidget {
 public:
  explicit SaidChart(BarChart* chart) : QAccessibleWidget(chart, QAccessible::Chart) {}
  SaidChart(const SaidChart&) = delete;
  SaidChart& operator=(const SaidChart&) = delete;

  int childCount() const override { return chart()->barCount(); }
  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    while (std::ssize(bars_) <= index)
      bars_.push_back(QAccessible::registerAccessibleInterface(
          new SaidBar(chart(), static_cast<int>(bars_.size()))));
    return QAccessible::accessibleInterface(bars_[static_cast<std::size_t>(index)]);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    for (int i = 0; i < childCount(); ++i)
      if (this->child(i) == child) return i;
    return -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    return child(chart()->barAt(chart()->mapFromGlobal(QPoint(x, y))));
  }
  QAccessibleInterface* focusChild() const override {
    return chart()->hasFocus() ? child(chart()->chosenBar()) : nullptr;
  }
  QString text(QAccessible::Text asked) const override {
    return asked == QAccessible::Value ? chart()->textOfBar(chart()->chosenBar())
                                       : QAccessibleWidget::text(asked);
  }

 protected:
  ~SaidChart() override {
    for (const QAccessible::Id bar : bars_) QAccessible::deleteAccessibleInterface(bar);
  }

 private:
  BarChart* chart() const { return static_cast<BarChart*>(widget()); }

  mutable std::vector<QAccessible::Id> bars_;  ///< those that were asked for, from the first
};

QAccessibleInterface* make(const QString& /*className*/, QObject* object) {
  auto* chart = qobject_cast<BarChart*>(object);
  return chart == nullptr ? nullptr : new SaidChart(chart);
}

}  // namespace

void installChartAccessibility() {
  QAccessible::installFactory(make);
}

}  // namespace mirelund
