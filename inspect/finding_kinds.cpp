#include "inspect/finding_kinds.h"

#include <algorithm>

namespace inspect {
namespace {

constexpr Severity kError = Severity::error;
constexpr Severity kWarning = Severity::warning;
constexpr Severity kNote = Severity::note;

constexpr KindInfo kKinds[] = {
    {Kind::not_fld, kError, "not an FLD file",
     "The file does not begin with the identification; nothing else is checked."},
    {Kind::other_version, kError, "another version of the format",
     "Only version 4 is supported; the rest is checked as version 4."},
    {Kind::file_ends, kError, "the file ends too early",
     "A record is expected, but the file ends: it was truncated, or the writer did not finish."},
    {Kind::record_beyond_end, kError, "a record reaches beyond the end of the file",
     "The file was truncated inside the record, or the leading marker of the record is wrong."},
    {Kind::leading_marker, kError, "wrong leading marker",
     "The marker before a record does not match its trailing marker and the length expected here."},
    {Kind::trailing_marker, kError, "the markers of a record differ",
     "The marker after a record does not repeat the one before it."},
    {Kind::record_length, kError, "a record of the wrong length",
     "The record is complete, but not as long as the record expected here."},
    {Kind::framing_lost, kError, "no record begins here",
     "Neither marker makes sense. The start of the next record is unknown, so nothing after this offset was "
     "checked."},
    {Kind::bytes_after_end, kWarning, "bytes after the end",
     "Readers stop at OverlapEnd; the file has additional bytes after it."},

    {Kind::title_not_text, kError, "a title with bytes that are not text",
     "Titles consist of printable characters; readers do not recognise this one."},
    {Kind::title_misspelt, kWarning, "a title similar to a known one",
     "It may be misspelt: it differs from the known title in case, or in at most one character of eight. "
     "Readers step over what it names, and so does the check."},
    {Kind::title_unknown, kNote, "an unknown title", "Readers step over it."},
    {Kind::title_misplaced, kError, "a title in the wrong place",
     "A header item among the sections, or a section in the header, where readers do not look for it."},
    {Kind::no_header_end, kError, "the header is not closed",
     "HeaderDataEnd is missing; readers treat the first region set as a header item."},
    {Kind::section_outside, kError, "a section outside the region sets",
     "There is no OverlapStart_ before it; readers cannot assign the section to a region set."},
    {Kind::no_region_set, kError, "no region set", "There is no OverlapStart_ in the file."},
    {Kind::section_twice, kWarning, "a section twice in a region set",
     "Readers use the last one for the mesh and the first one for a quantity."},
    {Kind::item_twice, kWarning, "a header item twice", "Readers use the last one."},
    {Kind::no_file_end, kError, "the file is not closed", "OverlapEnd is missing; readers refuse the file."},
    {Kind::empty_region_set, kWarning, "an empty region set",
     "There is no section between its OverlapStart_ and the next one or the end."},
    {Kind::no_nodes, kError, "a region set without nodes",
     "The first file of a dataset needs LS_Nodes in every region set; readers refuse the dataset."},
    {Kind::no_elements, kWarning, "a region set without elements",
     "The first file of a dataset has nodes here but no LS_Elements; the mesh is empty."},
    {Kind::no_materials, kNote, "a mesh without material numbers", "The elements' material is undefined."},
    {Kind::no_header_item, kNote, "a header item is missing",
     "The default applies: cycle 0, time 0, nothing undefined, index base 0, dimension 3."},
    {Kind::too_many_region_sets, kWarning, "too many region sets to check",
     "The content of this region set and the following ones was not checked."},
    {Kind::no_elements_in_largest, kError, "no elements in the largest mesh",
     "The first file of a dataset needs elements in the region set with the most nodes; readers refuse the "
     "dataset."},

    {Kind::rule_fields, kError, "a rule record with impossible fields",
     "A width, count or number of records is negative, or records have a width or length of zero."},
    {Kind::block_width, kError, "elements of the wrong width",
     "Integers have 4 bytes, real numbers 4 or 8, characters 1."},
    {Kind::block_count, kError, "a block of the wrong size",
     "The rule record does not describe as many elements as the preceding count. The rest of the section was "
     "not checked."},
    {Kind::rule_exceeds_block, kWarning, "a rule that allows longer records",
     "The block has fewer elements than a single record may hold by its rule. Readers accept this."},
    {Kind::section_ends_early, kError, "a section with too few blocks",
     "The end rule is found where a block is expected."},
    {Kind::section_goes_on, kError, "a section with too many blocks",
     "A block is found where the end rule is expected."},
    {Kind::no_end_rule, kError, "a title where a rule is expected",
     "The preceding section is not closed by an end rule."},
    {Kind::negative_count, kError, "a negative count", "The rest of the section was not checked."},
    {Kind::item_count, kError, "an action with the wrong number of items", "Readers stop with an assertion."},
    {Kind::unknown_action, kError, "an unknown kind of action",
     "Its items cannot be skipped, so the rest of the section cannot be read."},

    {Kind::dimension_two, kError, "a two-dimensional file", "Readers refuse it."},
    {Kind::dimension_odd, kError, "an impossible dimension", "It is 2 or 3."},
    {Kind::bias_odd, kWarning, "an unusual index base", "Node and element numbers usually start at 0 or 1."},
    {Kind::cycle_negative, kWarning, "a negative cycle number",
     "Motion cannot refer to this file by the cycle number in its name."},
    {Kind::time_not_finite, kError, "a solution time that is not finite",
     "The step cannot be ordered by time."},

    {Kind::element_type, kError, "an unknown element code",
     "The position of the nodes of all following elements is unknown."},
    {Kind::connectivity_length, kError, "a connectivity of the wrong length",
     "The element codes need another number of nodes than are stored."},
    {Kind::element_node, kError, "an element's node out of range",
     "Readers deliver the element with node 1 in its place."},
    {Kind::face_type, kError, "an unknown face code",
     "The position of the nodes of all following faces is unknown."},
    {Kind::face_list_length, kError, "a node list of the wrong length",
     "The face codes of the region need another number of nodes than are stored."},
    {Kind::face_node, kError, "a face's node out of range",
     "Readers deliver the face with node 1 in its place."},
    {Kind::face_link, kError, "a face's element out of range", "The face has no material."},
    {Kind::volume_element, kError, "a region's element out of range", "Readers leave the entry out."},
    {Kind::material_count, kError, "not one material number per element",
     "Elements without a material number have an undefined material."},
    {Kind::material_number, kError, "a material number out of range",
     "0 to 9999 are allowed, after a shift that makes a negative minimum 1. Readers refuse the file."},
    {Kind::coordinate_not_finite, kError, "coordinates that are not finite", "The nodes have no position."},
    {Kind::coordinate_system, kError, "an unknown coordinate system", "0 is Cartesian, 1 cylindrical."},
    {Kind::flat_element, kNote, "triangles or quadrilaterals among the elements",
     "Readers expect solid elements here; the nodes of all following elements are misplaced."},
    {Kind::no_content, kWarning, "an empty mesh", "The number of nodes or elements is 0."},
    {Kind::too_many_regions, kNote, "too many regions to compare",
     "The lists of the following regions were not checked against each other."},

    {Kind::name_empty, kWarning, "an empty name", "The region or quantity cannot be identified by its name."},
    {Kind::name_twice, kWarning, "a name twice",
     "Two regions of the same kind in a region set share the name; motion uses the first."},
    {Kind::name_not_text, kWarning, "a name that is not text",
     "It contains control characters, or is neither ASCII nor Shift_JIS nor UTF-8."},
    {Kind::label_not_text, kWarning, "a label that is not text",
     "It contains control characters, or is neither ASCII nor Shift_JIS nor UTF-8."},
    {Kind::too_many_names, kNote, "too many names to compare",
     "The following names were not checked for duplicates."},

    {Kind::value_count, kError, "not one value per node",
     "Nodes without a value are undefined; surplus values are ignored."},
    {Kind::not_a_number, kWarning, "NaN values", "The computation diverged, or the bytes are damaged."},
    {Kind::infinite, kWarning, "infinite values", "The computation diverged, or the bytes are damaged."},
    {Kind::undefined_share, kNote, "undefined values",
     "The solver marked them as undefined; hosts leave them out."},

    {Kind::moves_nothing, kWarning, "motion of an unknown region",
     "No volume region of the base file has a name that is a prefix of this one; readers skip it."},
    {Kind::base_cycle_missing, kError, "motion from an unknown cycle",
     "No file of the series has the cycle number of the base file; readers stop at this step."},
    {Kind::base_without_nodes, kWarning, "motion from a file without nodes",
     "The base file has no nodes for the region set; readers use the geometry that applies to the base "
     "file."},
    {Kind::motion_not_finite, kError, "motion with values that are not finite",
     "The moved nodes have no position."},
    {Kind::axis_without_length, kWarning, "a rotation about an axis of length zero",
     "The nodes are scaled and not rotated."},

    {Kind::cycle_differs, kWarning, "a cycle number that differs from the file name",
     "Files are ordered by name; motion finds its base file by the header."},
    {Kind::region_sets_differ, kError, "not as many region sets as the first file",
     "Readers stop when they look for the geometry of this step."},
    {Kind::time_goes_back, kWarning, "a time that does not increase",
     "The preceding file of the series has the same time or a later one."},
    {Kind::cycle_twice, kWarning, "a cycle number twice in the series",
     "Motion from this cycle uses the first of these files."},
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
