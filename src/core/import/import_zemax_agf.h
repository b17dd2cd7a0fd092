#pragma once
// Reader of AGF glass catalogues. Lines are taken by their keyword: NM starts a glass; ED,
// CD, TD, OD, LD and IT give its data; GC, MD, BD, CC, "!" comments, blank and unknown
// lines carry nothing used here. A line of bare numbers continues the keyword line before
// it (wrapped CD and TD values). The file may be UTF-8, Latin-1 or UTF-16 with its mark.
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/import/import_common.h"
#include "core/import/row_layout.h"
#include "core/import/staged_glass.h"
#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel {

inline constexpr const char* kNoCarriageReturnMsg =
    "This file cannot be read properly, because it does not contain any 'carraige returns'."
    "\r\n\r\nTo correct this, simply:\r\n\t1) read the file in Windows Notepad\r\n\t2) re-save "
    "it\r\n\t3) try importing again";

class CImportZemaxAGF {
  public:
    explicit CImportZemaxAGF(Dialogs& dialogs, ImportOptions options = {})
        : dialogs_(dialogs), options_(std::move(options)) {}

    // Reads the glasses of the file at path into records (replaced). bareName is the file's
    // name, which gives the source; glassKind is 8 from the form. refitErrors has one entry
    // per record, 0 unless the record was refitted. ok is -1 when the whole file was read.
    // ok 0 comes with errorText: a file without line ends, or a glass whose data cannot be
    // read (the glasses read before it stay in records and count).
    void ReadFile(const std::string& path, const std::string& bareName,
                  std::vector<MaterialRecord>& records, int& count, int& refitCount,
                  std::vector<float>& refitErrors, std::string& errorText, int16_t glassKind,
                  int16_t& ok);
    // The same into compact staged glasses, their transmission tables left to the leaving.
    void ReadFile(const std::string& path, const std::string& bareName,
                  std::vector<StagedGlass>& staged, int& count, int& refitCount,
                  std::vector<float>& refitErrors, std::string& errorText, int16_t glassKind,
                  int16_t& ok);

    // nd and vd of the NM line, one per record.
    const std::vector<StatedIndex>& stated() const { return stated_; }
    // Glasses passed over because their formula has no stored form.
    int skippedFormulaCount() const { return skipped_; }

    // A number as text; -1 (no data) gives the empty text. False when text is no number.
    static bool NumberOrBlank(std::string_view text, std::string& out);
    // The same with the value multiplied by 10.
    static bool TenfoldOrBlank(std::string_view text, std::string& out);
    static std::string SqueezeBlanks(std::string_view text);

  private:
    struct Keyed {
        std::vector<std::string_view> tokens;  // token 0 is the keyword
        // An IT row is kept as its line, its words read when the glass is; its tokens are
        // split only when a line of bare numbers continues it.
        std::string_view raw;
        size_t line = 0;
        bool present = false;
    };
    // The first three words after the keyword of an IT row, the first two read as numbers.
    struct RowWords {
        std::string_view word[3];
        size_t count = 0;  // words after the keyword, at most 3 counted
        double value[2] = {0, 0};
        bool number[2] = {false, false};
    };
    void ReadRowWords(const Keyed& row, RowWords& out);
    // IT rows of the learned layout, taken line after line as the file is read.
    struct RowRun {
        size_t first = 0;   // where the first row starts in the text
        size_t stride = 0;  // from one row to the next
        size_t count = 0;
        size_t line = 0;  // the line of the first row
    };
    // The lines of one glass. The storage is kept from glass to glass; only the first
    // itCount entries of `it` belong to the present glass. Its IT rows are either in `run`
    // or in `it`, never in both.
    struct GlassLines {
        Keyed nm, ed, cd, td, od, ld;
        std::vector<Keyed> it;
        size_t itCount = 0;
        RowRun run;
        void Reset();
        Keyed& AddRow(std::string_view raw, size_t line);
        // Moves the rows of `run` into `it`.
        void RowsOfRun(std::string_view text, size_t rowSize);
    };
    // Takes the line at `at` of text, line number `line`, into the glass when it is an IT row
    // of the learned layout; returns where the next line starts,
    // or 0 when the line is not such a row.
    size_t TakeLayoutRow(std::string_view text, size_t at, size_t line, GlassLines& glass);
    // The transmission rows of a glass into rec; caseB: it has rows that carry data.
    bool ReadRows(const GlassLines& lines, MaterialRecord& rec, bool& caseB);
    enum class Outcome { Added, Skipped, Failed };
    struct SourceField {
        FixedText<30> field;
        bool wideBand = false;  // the band of every glass reaches at least 1020 nm
    };

    Outcome ReadRecord(const GlassLines& lines, const SourceField& source, int16_t glassKind,
                       MaterialRecord& rec, bool& refitted, float& meanError, StatedIndex& stated);
    bool Fail(size_t line, const std::string& why);

    Dialogs& dialogs_;
    ImportOptions options_;
    std::vector<StatedIndex> stated_;
    int skipped_ = 0;
    size_t failLine_ = 0;
    std::string failWhy_;
    // Working lists of ReadRecord, kept from glass to glass.
    std::vector<double> coefficients_;
    std::vector<size_t> rowsIn_;
    std::vector<RowWords> rowWords_;
    RowLayout layout_;
    // The text of the file being read, shared with the staged glasses whose rows stay in it.
    std::shared_ptr<const std::string> text_;
};

}  // namespace ostrel
