#pragma once
// Readers of the older single-material text files: GLA from an older Lumbrak and GLS from
// an older Kelmora, which continues the GLA fields with the properties Kelmora added. Both
// are streams of comma or line separated fields; how they are spread over lines does not
// matter.
#include <string>
#include <vector>

#include "core/material/material_record.h"

namespace ostrel {

class CImportOldLumbrak {
  public:
    // On success records holds exactly the one material and ok is -1; any failure (an
    // unreadable number, an early end of file, no transmission rows, more than 41) gives
    // ok 0, with the reason in failure().
    void ReadFile(const std::string& path, std::vector<MaterialRecord>& records, int16_t& ok);
    const std::string& failure() const { return failure_; }

  private:
    std::string failure_;
};

class CImportOldKelmora {
  public:
    // As CImportOldLumbrak::ReadFile, and the Kelmora properties when the file has them.
    void ReadFile(const std::string& path, std::vector<MaterialRecord>& records, int16_t& ok);
    const std::string& failure() const { return failure_; }

    // A value that reads "NULL" (trimmed, any case) becomes the empty text, in place.
    static void NullToBlank(std::vector<std::string>& values);

  private:
    std::string failure_;
};

}  // namespace ostrel
