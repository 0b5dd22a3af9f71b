// SPDX-License-Identifier: GPL-3.0-or-later
// The folder in which a monkey lives: its home, its files, and what is watched there.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace mirelund::testing {

/// Made before the application: it becomes the home and the working folder of the
/// process, which gives up a superuser's rights for good, so that nothing outside can be harmed.
class Place {
 public:
  Place();
  ~Place();
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  /// What is typed into file dialogs: good, bad and odd.
  const QStringList& paths() const { return paths_; }

  /// A file dialog was given this path; an ending may be added to it. What leads
  /// out of the place ends the process.
  void name(const QString& path);

  /// What stands there that nobody named or is broken; empty when all is well.
  /// Each file is looked into once after every change.
  QString fault();
  int filesSaved() const { return saved_; }

 private:
  struct Seen {
    qint64 size;
    qint64 changed;
    quint64 node;
    friend bool operator==(const Seen&, const Seen&) = default;
  };

  void fill();
  void write(const QString& name, const QByteArray& bytes);
  bool mayStand(const QString& path) const;
  static QString contentFault(const QString& path);

  QTemporaryDir root_;
  QString files_;
  QStringList paths_;
  QSet<QString> named_;
  QHash<QString, Seen> seen_;
  int saved_ = 0;
};

}  // namespace mirelund::testing
