#pragma once
// The Schott melt sheet: the nine printed figures of a sheet (two indices and seven
// differences) turned into seven wavelength/index pairs for the melt maker. The figures are
// kept in entries 1 to 9 of the record's MeltTransThird so that they show again later.
#include <array>
#include <functional>
#include <string>

#include "core/material/material_record.h"
#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/shell/new_msg.h"

namespace ostrel {

class popMeltSchott {
  public:
    static constexpr int kFields = 9;
    static constexpr int kPairs = 7;
    static constexpr const char* kRangeMsg = "Index value outside valid range!";
    static constexpr const char* kOrderMsg =
        "Index value is not increasing as wavelength gets shorter!";
    static constexpr const char* kNoticeKey = "popMeltSchott";
    static constexpr const char* kNoticeTitle = "Schott melt data";
    static const char* NoticeText();

    struct Hooks {
        // Shows the form modally; returns when it has been unloaded.
        std::function<void(popMeltSchott&)> showModal;
    };

    popMeltSchott(Dialogs& dialogs, CNewMsg& newMsg, Hooks hooks = {});

    // Works on a copy of record; true with the pairs written back when left by OK.
    bool EnterSheet(MaterialRecord& record);
    // The steps before the form is shown.
    void Load(const MaterialRecord& record);

    // Why a figure typed into txtIndex[field] is not stored, as "nd: 2.5 is refused: ...";
    // empty when it is. A figure is stored when it is a number above 0 and below 2.5.
    static std::string EntryRefusal(int field, const std::string& text);

    // --- events ---
    // Enter pressed in, or focus leaving, txtIndex[field] (1 to 9).
    void txtIndexValidate(int field);
    void pctSchottClick();
    void comShowIndexClick();
    void comOKClick();
    void comCancelClick();

    // The seven pairs from the stored figures; with showTable the table is shown when the
    // sheet passes. ok false (message shown) when an index is out of range or falls toward
    // shorter wavelengths; the record is then unchanged.
    void ComputeSheet(bool showTable, bool& ok);
    void CheckEnable();
    // The nine quantities of the sheet from the record's polynomial, [1] to [9].
    std::array<double, kFields + 1> CatalogueValues() const;

    // --- state ---
    const MaterialRecord& Record() const { return rec_; }
    double Stored(int field) const { return rec_.Melt.MeltTransThird[static_cast<size_t>(field)]; }
    bool Accepted() const { return accepted_; }
    bool IsOpen() const { return open_; }
    const std::string& TableText() const { return table_; }

    // Labels of the fields, [1] to [9].
    static const std::array<const char*, kFields + 1>& FieldLabels();

    Control form{"Schott melt data"};
    std::array<NumberBox, kFields + 1> txtIndex;  // [0] is not used
    std::array<Label, kFields + 1> lblIndex;      // [0] is not used
    std::array<Label, kFields + 1> lblIndexCat;   // [0] is not used
    Panel fraDCFg{"d, C, F && g wavelengths:"};
    Panel fraEC1F1{"e, C' && F' wavelengths:"};
    Button comOK{"&OK"};
    Button comCancel{"&Cancel"};
    Button comShowIndex{"Show indicies", "shows index data"};
    Picture pctSchott;

  private:
    void ShowValue(int field);
    void Unload();

    Dialogs& dialogs_;
    CNewMsg& newMsg_;
    Hooks hooks_;
    MaterialRecord rec_;
    std::string table_;
    bool loading_ = false;
    bool accepted_ = false;
    bool open_ = false;
};

}  // namespace ostrel
