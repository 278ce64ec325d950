#include "tool/coordinate_names.h"

#include <cstdint>

#include "inspect/byte_source.h"
#include "inspect/visitor.h"
#include "inspect/walker.h"
#include "tool/interrupt.h"

namespace tool {
namespace {

constexpr int kCylindrical = 1;

class Finder : public inspect::Visitor {
 public:
  explicit Finder(std::set<int>& sets) : sets_(sets) {}

  void title(const inspect::Title& title) override {
    is_here_ = title.text == "LS_CoordinateSystem";
    region_set_ = static_cast<int>(title.region_set);
  }

  // The last integer of the section counts: a leading one precedes it.
  void integer(const inspect::Block& /*block*/, std::int64_t value) override {
    if (!is_here_) return;
    if (value == kCylindrical) {
      sets_.insert(region_set_);
    } else {
      sets_.erase(region_set_);
    }
  }

 private:
  std::set<int>& sets_;
  bool is_here_ = false;
  int region_set_ = 0;
};

// The file that the geometry of the session's step comes from.
std::string geometry_file(const host::Session& session) {
  const int geometry_step = session.geometry_step_of(session.step());
  int step = session.step();
  while (step > 0 && session.geometry_step_of(step - 1) == geometry_step) --step;
  const std::string file = session.file_of_step(step);
  return file.empty() ? session.path().string() : file;
}

}  // namespace

const AxisNames& CoordinateNames::of(const host::Session& session, const host::Part& part) {
  if (part.kind != host::PartKind::whole) return kAxes;
  const std::set<int>& sets = cylindrical_sets(geometry_file(session));
  return sets.contains(part.region_set.value_or(0)) ? kCylindricalAxes : kAxes;
}

const std::set<int>& CoordinateNames::cylindrical_sets(const std::string& file) {
  const auto [found, is_new] = sets_.try_emplace(file);
  if (!is_new) return found->second;
  try {
    inspect::FileSource source(file);
    Finder finder(found->second);
    inspect::walk(source, finder, [](std::uint64_t, std::uint64_t) { stop_if_interrupted(); });
  } catch (const inspect::ReadError&) {
    found->second.clear();
  }
  return found->second;
}

}  // namespace tool
