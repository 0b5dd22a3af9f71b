// SPDX-License-Identifier: GPL-3.0-or-later
#include "rendering.h"

#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTextBlock>
#include <algorithm>
#include <cmath>

#include "charts/bar_chart_widget.h"

namespace mirelund::testing {

namespace {

constexpr int kEndless = 1 << 20;

double luminance(QRgb color) {
  const auto part = [](int value) {
    const double level = value / 255.0;
    return level <= 0.04045 ? level / 12.92 : std::pow((level + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(qRed(color)) + 0.7152 * part(qGreen(color)) + 0.0722 * part(qBlue(color));
}

QSize asked(const QWidget* control, const QString& text, int flags = Qt::TextShowMnemonic) {
  return control->fontMetrics().size(flags, text);
}

QString nameOf(const QWidget* control) {
  for (const QWidget* named = control; named != nullptr; named = named->parentWidget())
    if (!named->objectName().isEmpty() && !named->objectName().startsWith("qt_"))
      return named->objectName();
  return control->metaObject()->className();
}

QRect buttonRoom(const QAbstractButton* button, QStyle::SubElement element) {
  QStyleOptionButton option;
  option.initFrom(button);
  option.text = button->text();
  return button->style()->subElementRect(element, &option, button);
}

ShownTextPlace textOfLabel(const QLabel* label) {
  QRect room = label->contentsRect();
  room.adjust(label->margin(), label->margin(), -label->margin(), -label->margin());
  const int mnemonic = label->buddy() != nullptr ? Qt::TextShowMnemonic : 0;
  const QFontMetrics metrics = label->fontMetrics();
  const QSize size = label->wordWrap() ? metrics
                                             .boundingRect(QRect(0, 0, room.width(), kEndless),
                                                           Qt::TextWordWrap, label->text())
                                             .size()
                                       : metrics.size(mnemonic, label->text());
  return {label->text(), room, size, {}, label->alignment(), true};
}

ShownTextPlace textOfBox(const QLineEdit* box) {
  QStyleOptionFrame option;
  option.initFrom(box);
  option.lineWidth = box->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, box);
  option.state |= QStyle::State_Sunken;
  constexpr int kMargin = 2;  // of the toolkit's, beside the text
  const QRect room = box->style()
                         ->subElementRect(QStyle::SE_LineEditContents, &option, box)
                         .marginsRemoved(box->textMargins())
                         .adjusted(kMargin, 0, -kMargin, 0);
  const QString text = box->text().isEmpty() ? box->placeholderText() : box->displayText();
  return {text, room, asked(box, text, Qt::TextSingleLine), {}, box->alignment() | Qt::AlignVCenter,
          true};
}

QList<ShownTextPlace> textsOfList(const QComboBox* list) {
  QStyleOptionComboBox option;
  option.initFrom(list);
  option.editable = false;
  const QRect room =
      list->style()
          ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, list)
          .adjusted(1, 0, -1, 0);
  const QString shown = list->currentIndex() < 0 ? list->placeholderText() : list->currentText();
  QList<ShownTextPlace> texts = {
      {shown, room, asked(list, shown, Qt::TextSingleLine), {}, Qt::AlignLeft | Qt::AlignVCenter}};
  // Each may be chosen. Names of funds are as long as they like.
  if (list->objectName() != "EFunds")
    for (int i = 0; i < list->count(); ++i)
      texts << ShownTextPlace{list->itemText(i), room,
                              asked(list, list->itemText(i), Qt::TextSingleLine), "item"};
  return texts;
}

QList<ShownTextPlace> textsOfTabs(const QTabBar* tabs) {
  QList<ShownTextPlace> texts;
  for (int i = 0; i < tabs->count(); ++i) {
    QStyleOptionTab option;
    option.initFrom(tabs);
    option.rect = tabs->tabRect(i);
    option.shape = tabs->shape();
    option.text = tabs->tabText(i);
    texts << ShownTextPlace{tabs->tabText(i),
                            tabs->style()->subElementRect(QStyle::SE_TabBarTabText, &option, tabs),
                            asked(tabs, tabs->tabText(i)), "tab " + QString::number(i)};
  }
  return texts;
}

QList<ShownTextPlace> textsOfChart(const BarChart* chart) {
  QList<ShownTextPlace> texts;
  for (const auto* element : chart->findChildren<QCPTextElement*>())
    if (element->visible() && !element->text().isEmpty())
      texts << ShownTextPlace{element->text(), element->rect(),
                              QFontMetrics(element->font()).size(0, element->text()),
                              element->objectName()};
  for (int i = 0; i < chart->legend->itemCount(); ++i) {
    auto* item = qobject_cast<QCPPlottableLegendItem*>(chart->legend->item(i));
    if (item == nullptr) continue;
    const QString name = item->plottable()->name();
    const QRect room = item->rect().adjusted(
        chart->legend->iconSize().width() + chart->legend->iconTextPadding(), 0, 0, 0);
    texts << ShownTextPlace{name,
                            room,
                            QFontMetrics(item->font()).size(0, name),
                            "legend",
                            Qt::AlignLeft | Qt::AlignVCenter,
                            true};
  }
  return texts;
}

// What is seen of a part of a control: the part of it that no ancestor cuts off. What a
// scroll area moves into view is seen.
QRect seen(const QWidget* control, QRect part) {
  const QWidget* inner = control;
  while (!inner->isWindow()) {
    const QWidget* outer = inner->parentWidget();
    const auto* area = outer->parentWidget() == nullptr
                           ? nullptr
                           : qobject_cast<QScrollArea*>(outer->parentWidget());
    if (area != nullptr && area->widget() == inner) return part;
    const QRect around = outer->rect().translated(-inner->mapTo(control->window(), QPoint()) +
                                                  outer->mapTo(control->window(), QPoint()));
    const QPoint offset =
        inner->mapTo(control->window(), QPoint()) - control->mapTo(control->window(), QPoint());
    part &= around.translated(offset);
    inner = outer;
  }
  return part;
}

bool isShown(const QWidget* control) {
  return control->isVisible() && control->width() > 0 && control->height() > 0;
}

// The controls of a window, without what the toolkit's own controls are made of.
QList<QWidget*> controlsOf(QWidget* window) {
  QList<QWidget*> controls;
  for (auto* control : window->findChildren<QWidget*>())
    if (!control->isWindow() && control->window() == window && isShown(control))
      controls << control;
  return controls;
}

// The colour that most of a rectangle has, and the one that is farthest from it.
struct Colors {
  QRgb ground = 0;
  QRgb ink = 0;
  double apart = 1.0;
};

Colors colorsIn(const Picture& picture, QRect place) {
  const QRect pixels = picture.pixelsOf(place);
  // Most pixels are as the one before.
  QHash<QRgb, int> counts;
  QRgb same = 0;
  int length = 0;
  for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(picture.pixels.constScanLine(y));
    for (int x = pixels.left(); x <= pixels.right(); ++x) {
      if (length > 0 && line[x] != same) {
        counts[same] += length;
        length = 0;
      }
      same = line[x];
      ++length;
    }
  }
  if (length > 0) counts[same] += length;
  Colors found;
  int most = 0;
  for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
    if (it.value() <= most) continue;
    most = it.value();
    found.ground = it.key();
  }
  found.ink = found.ground;
  for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
    const double apart = contrast(it.key(), found.ground);
    if (apart <= found.apart) continue;
    found.apart = apart;
    found.ink = it.key();
  }
  return found;
}

// Where the letters stand in their room, without the row or column at the edges.
QRect drawnPlace(const QWidget* control, const ShownTextPlace& text) {
  const Qt::LayoutDirection direction =
      text.byOwnDirection ? Qt::LeftToRight : control->layoutDirection();
  const QRect place = QStyle::alignedRect(direction, text.alignment, text.asked, text.room);
  return (place & text.room).adjusted(2, 2, -2, -2);
}

QString faint(const QWidget* control, const QString& text, const Picture& picture, QRect place) {
  if (text.trimmed().isEmpty() || place.isEmpty()) return {};
  place.translate(control->mapTo(control->window(), QPoint()));
  const Colors colors = colorsIn(picture, place);
  if (colors.apart >= kTextContrast) return {};
  return QString("%1 is faint: \"%2\" %3 on %4, %5:1")
      .arg(nameOf(control), text.left(40), QColor(colors.ink).name(), QColor(colors.ground).name())
      .arg(colors.apart, 0, 'f', 2);
}

}  // namespace

double contrast(QRgb one, QRgb other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QRect Picture::pixelsOf(QRect place) const {
  const double ratio = pixels.devicePixelRatio();
  place.translate(-part.topLeft());
  return QRectF(place.x() * ratio, place.y() * ratio, place.width() * ratio, place.height() * ratio)
             .toRect() &
         pixels.rect();
}

Picture pictureOf(QWidget* window, QRect part) {
  part &= window->rect();
  return {part, window->grab(part).toImage().convertToFormat(QImage::Format_RGB32)};
}

Picture pictureOf(QWidget* window) {
  return pictureOf(window, window->rect());
}

QRect around(const QWidget* control) {
  constexpr int kAround = 4;
  return QRect(control->mapTo(control->window(), QPoint()), control->size())
             .adjusted(-kAround, -kAround, kAround, kAround) &
         control->window()->rect();
}

QList<ShownTextPlace> textsOf(const QWidget* control) {
  if (const auto* label = qobject_cast<const QLabel*>(control)) return {textOfLabel(label)};
  if (const auto* button = qobject_cast<const QPushButton*>(control))
    return {{button->text(),
             buttonRoom(button, QStyle::SE_PushButtonContents),
             asked(button, button->text()),
             {}}};
  if (const auto* option = qobject_cast<const QRadioButton*>(control))
    return {{option->text(),
             buttonRoom(option, QStyle::SE_RadioButtonContents),
             asked(option, option->text()),
             {}}};
  if (const auto* option = qobject_cast<const QCheckBox*>(control))
    return {{option->text(),
             buttonRoom(option, QStyle::SE_CheckBoxContents),
             asked(option, option->text()),
             {}}};
  if (const auto* box = qobject_cast<const QLineEdit*>(control)) return {textOfBox(box)};
  if (const auto* list = qobject_cast<const QComboBox*>(control)) return textsOfList(list);
  if (const auto* tabs = qobject_cast<const QTabBar*>(control)) return textsOfTabs(tabs);
  if (const auto* chart = qobject_cast<const BarChart*>(control)) return textsOfChart(chart);
  if (const auto* frame = qobject_cast<const QGroupBox*>(control)) {
    QStyleOptionGroupBox option;
    option.initFrom(frame);
    option.text = frame->title();
    option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    const QRect room = frame->style()->subControlRect(QStyle::CC_GroupBox, &option,
                                                      QStyle::SC_GroupBoxLabel, frame) &
                       frame->rect();
    return {{frame->title(), room, asked(frame, frame->title()), {}}};
  }
  if (const auto* bar = qobject_cast<const QMenuBar*>(control)) {
    QList<ShownTextPlace> texts;
    for (QAction* menu : bar->actions())
      texts << ShownTextPlace{menu->text(), bar->actionGeometry(menu) & bar->rect(),
                              asked(bar, menu->text()), "menu"};
    return texts;
  }
  return {};
}

QStringList cutTexts(QWidget* window) {
  QStringList faults;
  QList<std::pair<const QWidget*, QRect>> drawn;
  for (const QWidget* control : controlsOf(window)) {
    for (const ShownTextPlace& text : textsOf(control)) {
      if (text.text.trimmed().isEmpty()) continue;
      const QSize room = seen(control, text.room).size();
      if (room.width() < text.asked.width() || room.height() < text.asked.height())
        faults << QString("%1 %2 is cut: \"%3\" asks for %4 x %5 and has %6 x %7")
                      .arg(nameOf(control), text.part, text.text.left(40))
                      .arg(text.asked.width())
                      .arg(text.asked.height())
                      .arg(room.width())
                      .arg(room.height());
    }
    const bool holdsOthers = qobject_cast<const QGroupBox*>(control) != nullptr;
    if (textsOf(control).isEmpty() || holdsOthers) continue;
    const QRect place(control->mapTo(window, QPoint()), control->size());
    for (const auto& [other, around] : drawn) {
      const QRect both = place & around;
      if (both.isEmpty() || other->isAncestorOf(control) || control->isAncestorOf(other)) continue;
      faults << QString("%1 lies over %2").arg(nameOf(control), nameOf(other));
    }
    drawn.append({control, place});
  }
  return faults;
}

QStringList faintTextsOf(const QWidget* control, const Picture& picture) {
  QStringList faults;
  const auto look = [&](const QString& text, const QRect& place) {
    if (const QString fault = faint(control, text, picture, place); !fault.isEmpty())
      faults << fault;
  };
  if (const auto* list = qobject_cast<const QListWidget*>(control)) {
    for (int i = 0; i < list->count(); ++i) {
      const QRect place = list->visualItemRect(list->item(i)) & list->viewport()->rect();
      look(list->item(i)->text(), place.translated(list->viewport()->pos()).adjusted(2, 2, -2, -2));
    }
  } else if (const auto* report = qobject_cast<const QPlainTextEdit*>(control)) {
    constexpr int kBorder = 4;
    constexpr int kTall = 80;  // its lines are all alike
    look(report->document()->isEmpty() ? report->placeholderText() : report->toPlainText(),
         report->viewport()->geometry().adjusted(kBorder, kBorder, -kBorder, -kBorder) &
             QRect(0, 0, report->width(), kTall));
  } else {
    for (const ShownTextPlace& text : textsOf(control))
      if (text.part != "item") look(text.text, drawnPlace(control, text));
  }
  return faults;
}

QStringList faintTexts(QWidget* window, const Picture& picture) {
  QStringList faults;
  for (const QWidget* control : controlsOf(window))
    if (control->isEnabled()) faults << faintTextsOf(control, picture);
  return faults;
}

QString faintMark(const QWidget* control, const Picture& without, const Picture& with) {
  const double ratio = with.pixels.devicePixelRatio();
  const QRect place = around(control);
  const QRect pixels = with.pixelsOf(place);
  const QPoint offset = without.pixelsOf(place).topLeft() - pixels.topLeft();
  int marked = 0;
  double most = 1.0;
  for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
    const auto* before =
        reinterpret_cast<const QRgb*>(without.pixels.constScanLine(y + offset.y())) + offset.x();
    const auto* after = reinterpret_cast<const QRgb*>(with.pixels.constScanLine(y));
    for (int x = pixels.left(); x <= pixels.right(); ++x) {
      if (before[x] == after[x]) continue;
      const double apart = contrast(before[x], after[x]);
      most = std::max(most, apart);
      if (apart >= kMarkContrast) ++marked;
    }
  }
  // As many as a line along the control's longer side, once.
  const double wanted = std::min(control->width(), 60) * ratio;
  if (marked >= wanted) return {};
  return QString("%1's focus is faint: %2 pixels of %3:1 and more, of %4 wanted; %5:1 at most")
      .arg(nameOf(control))
      .arg(marked)
      .arg(kMarkContrast)
      .arg(wanted)
      .arg(most, 0, 'f', 2);
}

}  // namespace mirelund::testing
