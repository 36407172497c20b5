// SPDX-License-Identifier: Apache-2.0
// Runs a fuzz target, which aborts at a fault, over the files in the folders that are given.
#include <QDirIterator>

#include <fuzz/support.hpp>

int main(int count, char* folders[])
{
  for (int i = 1; i < count; ++i)
  {
    QDirIterator files(folders[i], QDir::Files, QDirIterator::Subdirectories);
    require(files.hasNext(), std::string("nothing is kept in ") + folders[i]);
    while (files.hasNext())
    {
      QFile file(files.next());
      require(file.open(QIODevice::ReadOnly), "an input cannot be read");
      const std::string input = file.readAll().toStdString();
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
  }
}
