// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_MEMORYFILE_HPP
#define EDIT_MEMORYFILE_HPP

#include <QByteArray>
#include <QFile>

#include <algorithm>

namespace vesk::edit
{

/// A file that is in memory.
class MemoryFile : public QFile
{
public:
  explicit MemoryFile(const QByteArray& initial = {}) : content(initial) {}

  QByteArray content;

  // Bypass QFile, which would access the disk.
  // NOLINTBEGIN(bugprone-parent-virtual-call)
  bool open(OpenMode mode) override { return QIODevice::open(mode | Unbuffered); }
  void close() override { QIODevice::close(); }
  // NOLINTEND(bugprone-parent-virtual-call)
  bool isSequential() const override { return true; }

protected:
  qint64 readData(char* data, qint64 size) override
  {
    const qint64 read = std::min<qint64>(size, content.size() - position);
    std::copy_n(content.constData() + position, read, data);
    position += static_cast<int>(read);
    return read;
  }

  qint64 writeData(const char* data, qint64 size) override
  {
    content.append(data, static_cast<int>(size));
    return size;
  }

private:
  int position = 0;
};

} // namespace vesk::edit

#endif
