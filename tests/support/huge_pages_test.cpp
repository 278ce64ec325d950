// Huge pages for large blocks.
#include "support/huge_pages.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

TEST(HugePages, KeepContentsAndErrno) {
  for (const size_t size : {size_t{0}, size_t{1}, size_t{4} << 20, (size_t{9} << 20) + 5}) {
    std::vector<char> block(size, 'x');
    errno = ENOENT;
    fld::take_huge_pages(block.data(), size);
    EXPECT_EQ(ENOENT, errno);
    EXPECT_EQ(static_cast<std::ptrdiff_t>(size), std::count(block.begin(), block.end(), 'x'));
  }
}

TEST(HugePages, OfNullAreNotTaken) {
  errno = ENOENT;
  fld::take_huge_pages(nullptr, size_t{1} << 30);
  EXPECT_EQ(ENOENT, errno);
}

}  // namespace
