#include "core/melt/pop_melt_schott.h"

#include "core/melt/glass_melt.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"

namespace ostrel {

namespace {

// Sheet figures lie above 0 and below this.
constexpr float kFigureLimit = 2.5f;

bool TakesFigure(float value) {
    return value > 0.0f && value < kFigureLimit;
}

constexpr float kC = 656.273f, kC1 = 643.847f, kD = 587.562f, kE = 546.074f, kF = 486.133f,
                kF1 = 479.991f, kG = 435.834f;

}  // namespace

const char* popMeltSchott::NoticeText() {
    return "Schott melt sheets provide index data as a mixture of values and differences.\n"
           "To save you haveing to work out a chain of calculations, all you have to do is "
           "enter the values given on the melt sheet\n"
           "Ostrel will then calculate the index values at the C, C', F, F' & g wavelengths, "
           "and return these to the melt maker form";
}

const std::array<const char*, popMeltSchott::kFields + 1>& popMeltSchott::FieldLabels() {
    static const std::array<const char*, kFields + 1> labels{
        "",        "nd",      "ne",      "nF - nC",   "nd - nC",
        "nF - nd", "nF - ne", "ng - nF", "nF' - nC'", "nF' - ne"};
    return labels;
}

popMeltSchott::popMeltSchott(Dialogs& dialogs, CNewMsg& newMsg, Hooks hooks)
    : dialogs_(dialogs), newMsg_(newMsg), hooks_(std::move(hooks)), rec_(ClearedMaterialRecord()) {
    for (int i = 1; i <= kFields; ++i) {
        lblIndex[static_cast<size_t>(i)].caption = FieldLabels()[static_cast<size_t>(i)];
        lblIndexCat[static_cast<size_t>(i)].caption = "[1.23456]";
    }
}

bool popMeltSchott::EnterSheet(MaterialRecord& record) {
    rec_ = ClearedMaterialRecord();
    Load(record);
    if (hooks_.showModal) hooks_.showModal(*this);
    open_ = false;
    if (!accepted_) return false;
    record = rec_;
    return true;
}

void popMeltSchott::Load(const MaterialRecord& record) {
    rec_ = record;
    loading_ = true;
    accepted_ = false;
    open_ = true;
    for (int i = 1; i <= kFields; ++i) ShowValue(i);
    const auto cat = CatalogueValues();
    for (int i = 1; i <= kFields; ++i) {
        lblIndexCat[static_cast<size_t>(i)].caption =
            FormatNumber(cat[static_cast<size_t>(i)], "0.000000");
    }
    CheckEnable();
    newMsg_.Display(NoticeText(), kNoticeTitle, false, 0, kNoticeKey);
    loading_ = false;
}

std::array<double, popMeltSchott::kFields + 1> popMeltSchott::CatalogueValues() const {
    auto n = [&](float wave) {
        int16_t ok = 0;
        return IndexFromPolynomial(rec_.General.PolyCoef, wave, rec_.General.Polytype, ok);
    };
    const double nC = n(kC), nC1 = n(kC1), nd = n(kD), ne = n(kE), nF = n(kF), nF1 = n(kF1),
                 ng = n(kG);
    return {0, nd, ne, nF - nC, nd - nC, nF - nd, nF - ne, ng - nF, nF1 - nC1, nF1 - ne};
}

void popMeltSchott::ShowValue(int field) {
    const double v = Stored(field);
    txtIndex[static_cast<size_t>(field)].ShowNumber(v == 0 ? std::string()
                                                           : FormatNumber(v, "0.000000"));
}

std::string popMeltSchott::EntryRefusal(int field, const std::string& text) {
    if (field < 1 || field > kFields) return "there is no field " + std::to_string(field);
    const std::string label = FieldLabels()[static_cast<size_t>(field)];
    if (!IsValidNumber(text)) return label + ": \"" + text + "\" is no number";
    if (TakesFigure(static_cast<float>(Val(text)))) return {};
    return label + ": " + text + " is refused: a figure of the sheet lies above 0 and below 2.5";
}

void popMeltSchott::txtIndexValidate(int field) {
    if (field < 1 || field > kFields) return;
    const std::string text = txtIndex[static_cast<size_t>(field)].text;
    if (!IsValidNumber(text)) return;  // the text stays as typed
    const float value = static_cast<float>(Val(text));
    if (TakesFigure(value)) {
        rec_.Melt.MeltTransThird[static_cast<size_t>(field)] = value;
        CheckEnable();
    }
    ShowValue(field);
}

void popMeltSchott::pctSchottClick() {
    const auto cat = CatalogueValues();
    for (int i = 1; i <= kFields; ++i) {
        rec_.Melt.MeltTransThird[static_cast<size_t>(i)] = cat[static_cast<size_t>(i)];
        ShowValue(i);
    }
    CheckEnable();
}

void popMeltSchott::CheckEnable() {
    bool all = true;
    for (int i = 1; i <= kFields; ++i) all = all && Stored(i) > 0;
    comOK.enabled = all;
    comShowIndex.enabled = all;
}

void popMeltSchott::ComputeSheet(bool showTable, bool& ok) {
    ok = false;
    MeltData work = rec_.Melt;
    const auto& f = work.MeltTransThird;
    const std::array<float, kPairs> waves{kC, kC1, kD, kE, kF, kF1, kG};
    const std::array<double, kPairs> index{
        f[1] - f[4], (f[9] + f[2]) - f[8], f[1], f[2], f[5] + f[1],
        f[9] + f[2], f[7] + f[5] + f[1]};
    work.MeltIndexPoints = kPairs;
    work.MeltIndexWave.fill(0);
    work.MeltIndexValue.fill(0);
    table_ = " \twavelength\tindex\n";
    for (int i = 0; i < kPairs; ++i) {
        work.MeltIndexWave[static_cast<size_t>(i)] = waves[static_cast<size_t>(i)];
        work.MeltIndexValue[static_cast<size_t>(i)] = index[static_cast<size_t>(i)];
        std::string letter = SpectralLetter(waves[static_cast<size_t>(i)]);
        letter.resize(2, ' ');
        table_ += letter + "\t" + FormatNumber(waves[static_cast<size_t>(i)], "0.0000") + "\t\t" +
                  FormatNumber(index[static_cast<size_t>(i)], "0.000000") + "\n";
    }
    for (double v : index) {
        if (v < 1.1 || v > 2.2) {
            dialogs_.MsgBox(kRangeMsg, MsgButtons::OK, MsgIcon::Exclamation);
            return;
        }
    }
    for (int i = 0; i + 1 < kPairs; ++i) {
        if (index[static_cast<size_t>(i)] > index[static_cast<size_t>(i + 1)]) {
            dialogs_.MsgBox(kOrderMsg, MsgButtons::OK, MsgIcon::Exclamation);
            return;
        }
    }
    if (showTable) dialogs_.MsgBox(table_);
    rec_.Melt = work;
    ok = true;
}

void popMeltSchott::comShowIndexClick() {
    bool ok = false;
    ComputeSheet(true, ok);
}

void popMeltSchott::comOKClick() {
    bool ok = false;
    ComputeSheet(false, ok);
    if (!ok) return;
    accepted_ = true;
    Unload();
}

void popMeltSchott::comCancelClick() {
    accepted_ = false;
    Unload();
}

void popMeltSchott::Unload() {
    open_ = false;
}

}  // namespace ostrel
