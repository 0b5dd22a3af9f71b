// SPDX-License-Identifier: GPL-3.0-or-later
// A walk through the guide: does what its pages tell the reader to do, prints the
// reports and files that come of it, and leaves the pictures in the guide's folder.
#include <QDir>
#include <QTextStream>

#include "application.h"
#include "guide/guide_page.h"
#include "guide/guide_player.h"

namespace mirelund::tour {

namespace {

using namespace mirelund::testing;

QTextStream& out() {
  static QTextStream stream(stdout);
  return stream;
}

void keep(const QImage& picture, const QString& path) {
  // Few colours make a small file, and a window has few.
  QImage small = picture.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
  small.setText(kPictureContent, picture.text(kPictureContent));
  if (!small.save(path, "PNG", 0)) throw BadPage("cannot be written: " + path);
  out() << "picture  " << path << Qt::endl;
}

void walk(const QDir& guide, const QString& name) {
  QFile file(guide.filePath(name));
  if (!file.open(QIODevice::ReadOnly)) throw BadPage("cannot be read: " + file.fileName());
  const GuidePage page(name, QString::fromUtf8(file.readAll()));
  out() << "\n== " << name << " ==" << Qt::endl;
  GuidePlayer player(MIRELUND_SAMPLE);
  for (const GuideBlock& block : page.blocks) {
    if (block.kind == BlockKind::Inputs) player.play(block.lines);
    if (block.kind == BlockKind::Report || block.kind == BlockKind::File)
      out() << "-- line " << block.line << " --" << Qt::endl;
    if (block.kind == BlockKind::Report) out() << player.report() << Qt::endl;
    if (block.kind == BlockKind::File) out() << player.fileBytes() << Qt::endl;
    if (block.kind == BlockKind::Picture)
      keep(player.picture(block.name), guide.filePath("images/" + block.name + ".png"));
  }
}

}  // namespace

}  // namespace mirelund::tour

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // Dates are typed as month, day and year, wherever the tour plays.
  qputenv("LC_ALL", "en_US.UTF-8");
  QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
  const mirelund::Application application(argc, argv);
  mirelund::useProgramFont();
  const QDir guide(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString("docs/guide"));
  guide.mkpath("images");
  int wrongPages = 0;
  for (const QString& name : guide.entryList({"*.md"}, QDir::Files, QDir::Name)) {
    try {
      mirelund::tour::walk(guide, name);
    } catch (const std::runtime_error& wrong) {
      qCritical("%s: %s", qPrintable(name), wrong.what());
      ++wrongPages;
    }
  }
  return wrongPages == 0 ? 0 : 1;
}
