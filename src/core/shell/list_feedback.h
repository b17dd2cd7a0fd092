#pragma once
// What the last change of the custom list did, for the help line: a material added,
// changed (saved again, with a new date) or deleted, with the count of materials after it
// ("N-BK7 added: 12 materials in the list"). It compares the list with the one it saw last.
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/material/material_record.h"

namespace ostrel {

class ListFeedback {
  public:
    // Takes the list as it is now, saying nothing.
    void Reset(const std::vector<MaterialRecord>& list);
    // The message for the change from the list seen last to `list` ("" when nothing
    // changed), and `list` becomes the one seen last.
    std::string Update(const std::vector<MaterialRecord>& list);

  private:
    // Material key -> DateChanged.
    std::map<std::string, double> seen_;
    std::map<std::string, std::string> names_;
    bool started_ = false;
};

}  // namespace ostrel
