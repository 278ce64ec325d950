// The layouts of header items and sections. Each function reads the blocks of one, without the end rule.
#pragma once

namespace inspect {

class SectionReader;

void read_anything(SectionReader& section);

void read_application_version(SectionReader& item);
void read_release_date(SectionReader& item);
void read_dimension(SectionReader& item);
void read_bias(SectionReader& item);
void read_cycle(SectionReader& item);
void read_unused(SectionReader& item);

void read_coordinate_system(SectionReader& section);
void read_surfaces(SectionReader& section);
void read_surfaces_array(SectionReader& section);
void read_volumes(SectionReader& section);
void read_volumes_array(SectionReader& section);
void read_elements(SectionReader& section);
void read_materials(SectionReader& section);
void read_nodes(SectionReader& section);
void read_motion(SectionReader& section);
void read_scalar(SectionReader& section);
void read_vector(SectionReader& section);

}  // namespace inspect
