#include "inspect/finding_kinds.h"

#include <algorithm>

namespace inspect {
namespace {

constexpr Severity kError = Severity::error;
constexpr Severity kWarning = Severity::warning;
constexpr Severity kNote = Severity::note;

constexpr KindInfo kKinds[] = {
    {Kind::not_fld, kError, "not an FLD file",
     "The file does not begin with the identification; nothing else is looked at."},
    {Kind::other_version, kError, "another version of the format",
     "Version 4 is read; the rest is checked as if it were that."},
    {Kind::file_ends, kError, "the file ends too early",
     "A record is expected and the file is over: it was cut off, or the writer did not finish."},
    {Kind::record_beyond_end, kError, "a record reaches beyond the end of the file",
     "The file was cut off inside the record, or its leading marker is wrong."},
    {Kind::leading_marker, kError, "wrong leading marker",
     "The marker before a record does not give the length that the record has by its trailing marker and its "
     "place."},
    {Kind::trailing_marker, kError, "the markers of a record differ",
     "The marker after a record does not repeat the one before it."},
    {Kind::record_length, kError, "a record of the wrong length",
     "The record is whole, but not as long as the record that belongs here."},
    {Kind::framing_lost, kError, "no record begins here",
     "Neither marker makes sense. Where the next record begins is not known, so nothing behind this place "
     "was looked at."},
    {Kind::bytes_after_end, kWarning, "bytes after the end",
     "Readers stop at OverlapEnd; something was appended to the file."},

    {Kind::title_not_text, kError, "a title with bytes that are not text",
     "Titles are printable characters; readers will not recognise this one."},
    {Kind::title_misspelt, kError, "a misspelt title",
     "One or two characters differ from a title that readers know; they will step over what it names."},
    {Kind::title_unknown, kNote, "an unknown title", "Readers step over it."},
    {Kind::title_misplaced, kError, "a title in the wrong place",
     "A header item stands among the sections or a section in the header, where readers do not look for it."},
    {Kind::no_header_end, kError, "the header is not closed",
     "HeaderDataEnd is missing; readers take the first region set for a header item."},
    {Kind::section_outside, kError, "a section outside the region sets",
     "OverlapStart_ is missing before it; readers cannot tell what the section belongs to."},
    {Kind::no_region_set, kError, "no region set", "There is no OverlapStart_ in the file."},
    {Kind::section_twice, kWarning, "a section twice in a region set",
     "Of a mesh the later one holds, of a quantity the earlier one."},
    {Kind::item_twice, kWarning, "a header item twice", "The later one holds."},
    {Kind::no_file_end, kError, "the file is not closed", "OverlapEnd is missing; readers refuse the file."},
    {Kind::empty_region_set, kWarning, "an empty region set",
     "Nothing stands between its OverlapStart_ and the next one or the end."},
    {Kind::no_nodes, kError, "a region set without nodes",
     "The first file of a dataset needs LS_Nodes in every region set; readers refuse the dataset."},
    {Kind::no_elements, kWarning, "a region set without elements",
     "The first file of a dataset has nodes here but no LS_Elements; the mesh is empty."},
    {Kind::no_materials, kNote, "a mesh without material numbers", "The elements' material is undefined."},
    {Kind::no_header_item, kNote, "a header item is missing",
     "Its default holds: cycle 0, time 0, nothing undefined, index base 0."},
    {Kind::too_many_region_sets, kWarning, "too many region sets to check",
     "The content of the region sets from here on was not checked."},

    {Kind::rule_fields, kError, "a rule record with impossible fields",
     "A width, count or number of records is negative, or there are records without elements."},
    {Kind::block_width, kError, "elements of the wrong width",
     "Integers have 4 bytes, real numbers 4 or 8, characters 1."},
    {Kind::block_count, kError, "a block of the wrong size",
     "The rule record does not announce as many elements as the count before it says. The rest of the "
     "section was not checked."},
    {Kind::rule_exceeds_block, kWarning, "a rule that announces longer records",
     "The block has fewer elements than the rule gives a single record; readers do without."},
    {Kind::section_ends_early, kError, "a section with too few blocks",
     "The end rule comes where a block is expected."},
    {Kind::section_goes_on, kError, "a section with too many blocks",
     "A block comes where the end rule is expected."},
    {Kind::no_end_rule, kError, "a title where a rule is expected", "The section before it is not closed."},
    {Kind::negative_count, kError, "a negative count",
     "Nothing can have so many; the rest of the section was not checked."},
    {Kind::item_count, kError, "an action with the wrong number of items", "Readers stop at it."},
    {Kind::unknown_action, kError, "an unknown kind of action",
     "Its items cannot be stepped over, so the rest of the section cannot be read."},

    {Kind::dimension_two, kError, "a two-dimensional file", "Readers refuse it."},
    {Kind::dimension_odd, kError, "an impossible dimension", "It is 2 or 3."},
    {Kind::bias_odd, kWarning, "an unusual index base", "Node and element numbers begin with 0 or 1."},
    {Kind::cycle_negative, kWarning, "a negative cycle number",
     "Motion cannot refer to the file by the number in its name."},
    {Kind::time_not_finite, kError, "a solution time that is no number", "The step cannot be put in order."},

    {Kind::element_type, kError, "an unknown element code",
     "Where the nodes of the elements after it begin is not known."},
    {Kind::connectivity_length, kError, "a connectivity of the wrong length",
     "The elements need another number of nodes than there are."},
    {Kind::element_node, kError, "an element's node outside the nodes", "Readers leave the element out."},
    {Kind::face_type, kError, "an unknown face code",
     "Where the nodes of the faces after it begin is not known."},
    {Kind::face_list_length, kError, "a node list of the wrong length",
     "The faces of the region need another number of nodes than there are."},
    {Kind::face_node, kError, "a face's node outside the nodes", "Readers leave the face out."},
    {Kind::face_link, kError, "a face's element outside the elements", "The face has no material."},
    {Kind::volume_element, kError, "a region's element outside the elements", "Readers leave it out."},
    {Kind::material_count, kError, "another number of materials than elements",
     "Elements without an entry have no material."},
    {Kind::material_number, kError, "a material number out of range",
     "0 to 9999 are allowed, after negative ones were shifted so that the smallest is 1; readers refuse the "
     "file."},
    {Kind::coordinate_not_finite, kError, "coordinates that are no numbers", "The nodes have no place."},
    {Kind::coordinate_system, kError, "an unknown coordinate system", "0 is Cartesian, 1 cylindrical."},
    {Kind::flat_element, kNote, "triangles or quadrilaterals among the elements",
     "Readers that know solids alone put the elements after them out of place."},
    {Kind::no_content, kWarning, "a mesh with nothing in it", "The number of nodes or elements is 0."},
    {Kind::too_many_regions, kNote, "too many regions to compare",
     "The lists of the regions from here on were not compared with each other."},

    {Kind::name_empty, kWarning, "an empty name", "The region or quantity cannot be told from others."},
    {Kind::name_twice, kWarning, "a name twice",
     "Two regions of one kind in a region set have the same name; motion finds the first."},
    {Kind::name_not_text, kWarning, "a name that is not text",
     "It has control characters, or is neither ASCII nor Shift_JIS nor UTF-8."},
    {Kind::label_not_text, kWarning, "a label that is not text",
     "It has control characters, or is neither ASCII nor Shift_JIS nor UTF-8."},
    {Kind::too_many_names, kNote, "too many names to compare",
     "The names from here on were not compared with each other."},

    {Kind::value_count, kError, "another number of values than nodes",
     "Nodes without a value are undefined, values beyond the nodes belong to nothing."},
    {Kind::not_a_number, kWarning, "values that are not a number",
     "The computation broke down, or the bytes are damaged."},
    {Kind::infinite, kWarning, "infinite values", "The computation broke down, or the bytes are damaged."},
    {Kind::undefined_share, kNote, "undefined values", "The writer marked them so; hosts leave them out."},

    {Kind::moves_nothing, kWarning, "motion of a region that is not there",
     "No volume region of the base file has a name with which this one begins; readers skip it."},
    {Kind::base_cycle_missing, kError, "motion from a cycle that is not there",
     "No file of the series has the base file's cycle number; readers stop at the step."},
    {Kind::base_without_nodes, kWarning, "motion from a file without nodes",
     "The base file has no nodes for the region set; readers take the geometry that applies to it."},
    {Kind::motion_not_finite, kError, "motion with values that are no numbers",
     "The moved nodes have no place."},
    {Kind::axis_without_length, kWarning, "a rotation about nothing",
     "The axis has no length, so the nodes are scaled and not turned."},

    {Kind::cycle_differs, kWarning, "another cycle number than in the name",
     "Files are ordered by their names; motion finds its base by the header."},
    {Kind::region_sets_differ, kError, "another number of region sets than in the first file",
     "Readers stop when they look for the geometry of the step."},
    {Kind::time_goes_back, kWarning, "a time that does not grow",
     "The file before it in the series has the same time or a later one."},
    {Kind::cycle_twice, kWarning, "a cycle number twice in the series",
     "Motion from this cycle takes the first of the files."},
};

}  // namespace

std::span<const KindInfo> all_kinds() {
  return kKinds;
}

const KindInfo& info(Kind kind) {
  return *std::lower_bound(std::begin(kKinds), std::end(kKinds), kind,
                           [](const KindInfo& entry, Kind wanted) { return entry.kind < wanted; });
}

std::string number_text(Kind kind) {
  return "FLD-" + std::to_string(static_cast<int>(kind));
}

std::string_view name(Severity severity) {
  switch (severity) {
    case Severity::error:
      return "error";
    case Severity::warning:
      return "warning";
    case Severity::note:
      break;
  }
  return "note";
}

}  // namespace inspect
