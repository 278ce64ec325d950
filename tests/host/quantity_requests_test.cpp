#include "host/quantity_requests.h"

#include "gtest/gtest.h"
#include <optional>

namespace {

TEST(QuantityRequests, DropOnlyWhenTheSameVariableMovesToAnotherPart) {
  host::QuantityRequests requests;
  requests.note(1, 1, std::nullopt);
  EXPECT_FALSE(requests.needs_drop(1, 1, std::nullopt));
  EXPECT_FALSE(requests.needs_drop(2, 2, std::nullopt));
  EXPECT_TRUE(requests.needs_drop(1, 2, std::nullopt));
}

TEST(QuantityRequests, RememberAVariableThatWasAskedBeforeAnother) {
  // The request in between may not have been read at all, so the first quantity may still be the cached one.
  host::QuantityRequests requests;
  requests.note(1, 1, std::nullopt);
  requests.note(2, 2, std::nullopt);
  EXPECT_TRUE(requests.needs_drop(1, 3, std::nullopt));
}

TEST(QuantityRequests, KnowThatTwoPartsAreOfOneRegionSet) {
  host::QuantityRequests requests;
  requests.note(1, 5, 0);
  EXPECT_FALSE(requests.needs_drop(1, 7, 0));
  EXPECT_TRUE(requests.needs_drop(1, 6, 1));
  EXPECT_TRUE(requests.needs_drop(1, 1, std::nullopt));
}

TEST(QuantityRequests, StartAfreshWhenTheCacheIsEmpty) {
  host::QuantityRequests requests;
  requests.note(1, 1, std::nullopt);
  requests.clear();
  EXPECT_FALSE(requests.needs_drop(1, 2, std::nullopt));
}

}  // namespace
