#pragma once
// Reader of GLC glass catalogues: a header line whose last word names the maker, then one
// line per glass with the name in its first ten characters and blank-separated values.
// A header whose last word names no maker (a date, a number) gives the file's name, up to
// its first point, as the source instead. A line that cannot be used (a missing value, a
// formula other than 1, 2 or 3, more than 150 transmission rows, a failed refit) is passed
// over and listed with the reason in passedOver(); only a failed fit shows a box.
#include <string>
#include <string_view>
#include <vector>

#include "core/import/import_common.h"
#include "core/import/staged_glass.h"
#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel {

class CImportOsloGLC {
  public:
    explicit CImportOsloGLC(Dialogs& dialogs, ImportOptions options = {})
        : dialogs_(dialogs), options_(std::move(options)) {}

    // Reads every usable line of the file at path into records (replaced). ok -1 when the
    // file was read (count may then be 0), ok 0 with count 0 when it could not be read or
    // has no header line.
    void ReadFile(const std::string& path, std::vector<MaterialRecord>& records, int& count,
                  int& refitCount, std::vector<float>& refitErrors, int16_t& ok);
    // The same into compact staged glasses, their transmission tables left to the leaving.
    void ReadFile(const std::string& path, std::vector<StagedGlass>& staged, int& count,
                  int& refitCount, std::vector<float>& refitErrors, int16_t& ok);

    // One glass line; false when the line is to be passed over.
    bool ReadRecord(std::string_view line, const std::string& source, MaterialRecord& rec,
                    bool& refitted, float& meanError, StatedIndex& stated);

    // nd and vd of each record's line.
    const std::vector<StatedIndex>& stated() const { return stated_; }
    // The named lines of the last read that were passed over, with the reason.
    const std::vector<PassedOver>& passedOver() const { return passedOver_; }
    // Why the last read ended with ok 0; empty after a good read.
    const std::string& failure() const { return failure_; }

    // "0" blanks CR, FR, SR, AR and PR; any other text gives them its first five characters,
    // one each.
    static void SplitResistances(OtherData& other, const std::string& text);
    // Passes the text through unchanged.
    static std::string ToGeneralValue(const std::string& text) { return text; }
    static std::string SqueezeBlanks(std::string_view text);
    // True when a header's last word can name a maker: it holds a letter and is no date.
    static bool IsMakerWord(std::string_view word);
    // The file's name up to its first point.
    static std::string SourceFromFileName(const std::string& path);

  private:
    Dialogs& dialogs_;
    ImportOptions options_;
    static constexpr const char* kUnreadable = "a value is missing or is no number";
    std::vector<StatedIndex> stated_;
    std::vector<PassedOver> passedOver_;
    std::string why_;  // why ReadRecord passed its line over
    std::string failure_;
    std::vector<std::string_view> fields_;  // of the line being read, reused line to line
};

}  // namespace ostrel
