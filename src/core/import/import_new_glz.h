#pragma once
// Reader of the GLZ text format (see glz_writer.h). Blocks are found by their start
// heading; inside a block the sections are found by their headings, in any order, and
// lines that are no heading are passed over.
#include <string>
#include <vector>

#include "core/import/field_stream.h"
#include "core/import/glz_writer.h"
#include "core/import/import_common.h"
#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel {

inline constexpr const char* kNotGlzMsg =
    "This is not a Dorlantik GLZ material data file.  Import will abort.";

class CImportNewGLZ {
  public:
    explicit CImportNewGLZ(Dialogs& dialogs, ImportOptions options = {})
        : dialogs_(dialogs), options_(std::move(options)) {}

    // Reads every block of the file at fileName into records (replaced). A first line
    // without the title shows kNotGlzMsg and the read goes on. Any failure (an unreadable
    // number, an end of file inside a block, more rows than the tables hold) ends the read:
    // count 0, records emptied, ok 0, and failure() says where. Otherwise ok -1.
    void ReadFile(const std::string& fileName, std::vector<MaterialRecord>& records, int& count,
                  int16_t& ok);

    // Where and why the last read failed: "line N: reason".
    const std::string& failure() const { return failure_; }

    // Left from an older layout in which the five resistance classes were one text: gives
    // CR, FR, SR, AR and PR one character each. No read path uses them now.
    static void SplitResistances(MaterialRecord& rec, const std::string& text);
    // "0" becomes the empty text.
    static std::string ZeroToBlank(const std::string& text);

  private:
    // One block, entered just after its start heading; true at the end heading.
    bool ReadRecord(FieldStream& in, MaterialRecord& rec);

    Dialogs& dialogs_;
    ImportOptions options_;
    std::string failure_;
};

}  // namespace ostrel
