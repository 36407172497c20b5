// SPDX-License-Identifier: Apache-2.0
// What else batches do is in golden/tool/batch.txt.
#include <tools/veskpackage/files/batch.hpp>

#include <gmock/gmock.h>

#include <iostream>
#include <new>

TEST(Batch, GoesOnWhenMemoryRunsOutOverAFile)
{
  tool::Inputs inputs;
  inputs.files = {"a", "b", "c"};
  std::string seen;
  const auto work = [&seen](const std::string& file, std::ostream&, std::ostream&)
  {
    seen += file;
    return file == "b" ? throw std::bad_alloc() : tool::Done;
  };
  EXPECT_EQ(tool::forEachFile(inputs, work), tool::FileTrouble);
  EXPECT_EQ(seen, "abc");
  const auto workInParts = [&](const tool::InputFile& file) -> tool::Rest
  {
    work(file.path, std::cout, std::cerr);
    return [&seen, file](std::ostream&, std::ostream&)
    {
      seen += file.path;
      return file.path == "a" ? throw std::bad_alloc() : tool::Done;
    };
  };
  EXPECT_EQ(tool::forEachFileInOrder(inputs, workInParts), tool::FileTrouble);
  EXPECT_EQ(seen, "abcaabcc");
}
