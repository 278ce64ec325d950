// Who a part is at every step.
#include "host/part_identity.h"

#include "gtest/gtest.h"
#include <string>

#include "host/session.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

namespace {

using host::PartIdentity;
using host::PartKind;

// Two surfaces, two volumes and two whole meshes, of one name each.
TEST(PartIdentity, CountsThePartsOfAKindAndName) {
  const fake::Reader reader;
  host::Session session(reader.library, {});
  session.open(fake::file(fake::kTwoSets));

  const std::vector<PartIdentity> identities = host::part_identities(session);
  ASSERT_EQ(identities.size(), 6U);
  EXPECT_EQ(identities[2].kind, PartKind::volume);
  EXPECT_EQ(identities[2].name, "FLUID");
  EXPECT_EQ(identities[2].occurrence, 0);
  EXPECT_EQ(identities[3].occurrence, 1);

  const std::map<PartIdentity, int> numbers = host::part_numbers(session);
  EXPECT_EQ(numbers.size(), 6U);
  EXPECT_EQ(numbers.at({PartKind::surface, "WALL", 0}), 1);
  EXPECT_EQ(numbers.at({PartKind::surface, "WALL", 1}), 2);
  EXPECT_EQ(numbers.at({PartKind::whole, "ALL_ELEMENTS", 1}), 6);
  EXPECT_FALSE(numbers.contains({PartKind::volume, "WALL", 0}));
}

}  // namespace
