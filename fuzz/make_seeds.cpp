// Writes the seeds of the targets: fuzz_seeds FOLDER creates FOLDER/<target>/ for each.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "fuzz/good_datasets.h"
#include "fuzz/record_readers.h"
#include "testkit/file_writer.h"

namespace {

using fuzz::RecordReader;

class Seeds {
 public:
  explicit Seeds(std::filesystem::path folder) : folder_(std::move(folder)) {}

  void write(const std::string& target, const std::string& name, std::string_view bytes) const {
    std::filesystem::create_directories(folder_ / target);
    testkit::write_bytes(folder_ / target / name, bytes);
  }

  // One of the target "records".
  void write_record(const std::string& name, RecordReader reader, std::int64_t count,
                    std::string_view file) const {
    std::string input = {static_cast<char>(reader), static_cast<char>(count >> 8), static_cast<char>(count)};
    write("records", name, input += file);
  }

 private:
  std::filesystem::path folder_;
};

// The readers for a section with this title.
std::vector<RecordReader> readers_of(std::string_view title) {
  static const std::map<std::string_view, std::vector<RecordReader>> kBySection = {
      {"LS_CoordinateSystem", {RecordReader::coordinate_system, RecordReader::skip}},
      {"LS_Nodes", {RecordReader::nodes}},
      {"LS_Elements", {RecordReader::elements}},
      {"LS_MatOfElements", {RecordReader::materials}},
      {"LS_SurfaceGeometry", {RecordReader::surfaces}},
      {"LS_SurfaceGeometryArray", {RecordReader::surface_array}},
      {"LS_VolumeGeometry", {RecordReader::volumes}},
      {"LS_VolumeGeometryArray", {RecordReader::volume_array}},
      {"LS_ALE", {RecordReader::motion, RecordReader::skip}}};
  if (title.starts_with("LS_Scalar:")) return {RecordReader::scalar, RecordReader::scalar_index};
  if (title.starts_with("LS_Vector:")) return {RecordReader::vector, RecordReader::vector_index};
  const auto found = kBySection.find(title);
  return found == kBySection.end() ? std::vector<RecordReader>{} : found->second;
}

// The readers for a block of this kind.
std::vector<RecordReader> readers_of(const testkit::Block& block) {
  if (std::holds_alternative<testkit::Reals>(block.data)) {
    return {block.size() == 1 ? RecordReader::real : RecordReader::reals};
  }
  if (std::holds_alternative<std::string>(block.data)) {
    return {RecordReader::text, RecordReader::field, RecordReader::characters, RecordReader::characters80};
  }
  if (block.width == 8) return {RecordReader::long_integers};
  if (block.size() == 1) return {RecordReader::integer, RecordReader::long_integers};
  return {RecordReader::integers, RecordReader::integer_array, RecordReader::skip_block};
}

void make_record_seeds(const Seeds& seeds, const std::string& name, const testkit::File& file) {
  testkit::Places places;
  const std::string bytes = testkit::to_bytes(file, &places);
  const auto between = [&bytes](std::uint64_t begin, std::uint64_t end) {
    return std::string_view(bytes).substr(begin, end - begin);
  };
  seeds.write_record(name + "-identification", RecordReader::identification, 0, between(0, 28));
  const testkit::Place& header_end = places.of("HeaderDataEnd");
  seeds.write_record(name + "-header", RecordReader::header, 0,
                     between(places.all.front().offset, header_end.end));
  seeds.write_record(name + "-title", RecordReader::title, 0, between(header_end.offset, header_end.end));
  int number = 0;
  for (std::size_t set = 0; set < file.region_sets.size(); ++set) {
    for (const testkit::Section& section : file.region_sets[set].sections) {
      const std::string& title = section.title.text;
      int occurrence = 0;
      while (places.of(title, occurrence).region_set != static_cast<int>(set)) ++occurrence;
      const testkit::Place& place = places.of(title, occurrence);
      const std::string stem = name + "-" + std::to_string(++number);
      for (const RecordReader reader : readers_of(title)) {
        seeds.write_record(stem + "-section-" + std::to_string(static_cast<int>(reader)), reader, 3,
                           between(place.blocks.front(), place.end));
      }
      seeds.write_record(stem + "-end", RecordReader::end, 0, between(place.end - 20, place.end));
      for (std::size_t b = 0; b < place.blocks.size(); ++b) {
        const std::uint64_t end = b + 1 < place.blocks.size() ? place.blocks[b + 1] : place.end - 20;
        for (const RecordReader reader : readers_of(section.blocks[b])) {
          seeds.write_record(
              stem + "-" + std::to_string(b) + "-block-" + std::to_string(static_cast<int>(reader)), reader,
              section.blocks[b].size(), between(place.blocks[b], end));
        }
      }
    }
  }
}

void make_call_seeds(const Seeds& seeds, std::size_t datasets) {
  for (std::size_t d = 0; d < datasets; ++d) {
    // Every call by number, starting with an opening, with small choices in between.
    std::string calls = {0, static_cast<char>(d)};
    for (char choice = 0; choice < 4; ++choice) {
      for (char call = 2; call < 24; ++call) calls += {call, choice, choice, choice, 0};
    }
    calls += {1, 0, static_cast<char>(d)};
    seeds.write("calls", "every-call-" + std::to_string(d), calls);
  }
}

void make_seeds(const Seeds& seeds) {
  const auto datasets = fuzz::good_datasets();
  for (const fuzz::GoodDataset& dataset : datasets) {
    for (std::size_t i = 0; i < dataset.files.size(); ++i) {
      const std::string stem = dataset.name + "-" + std::to_string(i + 1);
      seeds.write("session", stem, testkit::to_bytes(dataset.files[i]));
      seeds.write("decoders", stem, testkit::to_bytes(dataset.files[i]));
      make_record_seeds(seeds, stem, dataset.files[i]);
      if (i == 0) continue;
      const std::string both = testkit::to_bytes(dataset.files[0]) + testkit::to_bytes(dataset.files[i]);
      seeds.write("series", stem, std::string(1, '\0') + both);
      seeds.write("decoders", stem + "-series", both);
      seeds.write("series", stem + "-simplified", std::string(1, '\1') + both);
    }
  }
  make_call_seeds(seeds, datasets.size());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: fuzz_seeds FOLDER\n", stderr);
    return 2;
  }
  try {
    make_seeds(Seeds(argv[1]));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
