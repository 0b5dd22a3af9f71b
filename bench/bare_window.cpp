// SPDX-License-Identifier: GPL-3.0-or-later
// The limit of the program's start: a bare window of the toolkit, three buttons.
#include <QApplication>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  for (const char* caption : {"One", "Two", "Three"}) layout->addWidget(new QPushButton(caption));
  window.show();
  return QApplication::exec();
}
