#pragma once
// The writer of the GLZ text format, the program's own backup and exchange file: any number
// of material blocks between a title line and "EOF", CR LF line ends, texts in the
// single-byte code page. The format carries what a user entered and leaves out what can be
// computed again.
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/file_io.h"

namespace ostrel {

// Headings of the format, compared exactly.
inline constexpr const char* kGlzTitle = "Harvenz Photonics - Ostrel  - text file";
inline constexpr const char* kGlzBlockStart = "#-- Material Data Start --";
inline constexpr const char* kGlzGeneral = "#     -- General --";
inline constexpr const char* kGlzDndt = "#     -- dn/dt--";
inline constexpr const char* kGlzOther = "#     -- Chem/Mech/Thermal --";
inline constexpr const char* kGlzTrans = "#     -- Transmission --";
inline constexpr const char* kGlzOldIndex = "#     -- Index --";
inline constexpr const char* kGlzRefIndex = "#     -- Ref Index --";
inline constexpr const char* kGlzMelt = "      -- Melt [optional] --";
inline constexpr const char* kGlzBlockEnd = "#-- Material Data End --";
inline constexpr const char* kGlzEof = "EOF";

// A date in the long form of the title line, "Tuesday, March 3, 2026".
std::string LongDateText(double date);

// Appends the block of one record to out. It works on the record itself: NormaliseRecord
// and trimmed texts are left in the record. The transmission section holds the rows that
// hold data (RealTransRows); TransPoints stays as it is.
void WriteGlzRecord(std::string& out, MaterialRecord& rec);

// The whole file image of list positions first..last (1-based, inclusive; positions outside
// the list are passed over), the title line dated `date`.
std::string GlzFileImage(std::vector<MaterialRecord>& list, int first, int last, double date);

// Writes list positions first..last to folder/fileName (fileName may also be a full path
// when folder is empty), replacing any file there. False with the system's reason in error.
bool WriteGlzFile(const std::string& folder, const std::string& fileName,
                  std::vector<MaterialRecord>& list, int first, int last, double date,
                  FileError& error);

}  // namespace ostrel
