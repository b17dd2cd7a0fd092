#include "core/melt/frm7melt.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>
#include <utility>

#include "core/external/kelmora_database.h"
#include "core/materialform/frm2_manage.h"
#include "core/materialform/verification.h"
#include "core/melt/glass_melt.h"
#include "core/optics/derived_data.h"
#include "core/optics/glass_code.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {

constexpr int kColLetter = 1, kColWave = 2, kColIndex = 3, kColParent = 4, kColDiff = 5,
              kColFit = 6;

// A cell read through a 32-bit float, 0 when it is not a number.
float CellFloat(const Grid& grid, int col, int row) {
    const std::string text = grid.Text(col, row);
    return IsValidNumber(text) ? static_cast<float>(Val(text)) : 0.0f;
}

// Bubble sort into descending wavelength; equal wavelengths keep their order.
template <class T, class Wave>
void SortDescending(std::vector<T>& items, Wave wave) {
    for (size_t pass = 1; pass < items.size(); ++pass) {
        for (size_t j = 0; j + pass < items.size(); ++j) {
            if (wave(items[j]) < wave(items[j + 1])) std::swap(items[j], items[j + 1]);
        }
    }
}

void TrimText(auto& field) {
    field.Set(field.Text());
}

}  // namespace

const char* frm7Melt::NoticeText() {
    return "This form will help you create a melt glass for use in the Lumbrak Plus suite\n\n"
           "A melt glass is based upon an existing catalog glass, but its refractive index "
           "values are slightly different.\n\n"
           "To define a melt glass, you will need to define:\n"
           "\ta parent material\n"
           "\ta code name for the melt\n"
           "\tat least 4 wavelength/index pairs [from melt sheet]\n\n"
           "Ostrel will then calculate the differences from the parent glass, and re-fit the "
           "index polynomial. All non-index related properties will be unchanged, except the "
           "glass name, which will be the parent glass name followed by the melt code";
}

frm7Melt::frm7Melt(GlassesList& list, Dialogs& dialogs, CNewMsg& newMsg, std::string kelmoraFolder,
                   Hooks hooks, ManageForms* forms)
    : list_(list),
      dialogs_(dialogs),
      newMsg_(newMsg),
      kelmora_(std::move(kelmoraFolder)),
      hooks_(std::move(hooks)),
      forms_(forms),
      melt_(ClearedMaterialRecord()),
      parent_(ClearedMaterialRecord()) {
    InitGrid();
}

void frm7Melt::Trap(const char* what, const std::function<void()>& body) {
    try {
        body();
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay(what, e.what(), 0);
    }
}

// --- life cycle ---

bool frm7Melt::DisplayNew(bool modal) {
    Trap("The melt maker could not be opened.", [&] {
        mode_ = kModeNew;
        caption_ = "Melt glass: new";
        loading_ = true;
        saved_ = false;
        saveAllowed_ = true;
        ownerHidden_ = false;
        owner_ = nullptr;
        melt_ = ClearedMaterialRecord();
        parent_ = ClearedMaterialRecord();
        comAdd.caption = "&Save";
        comAdd.toolTip = "Add this material to the ostrel database";
        FormLoad();
    });
    if (hooks_.show) hooks_.show(modal);
    return saved_;
}

void frm7Melt::DisplayEdit(const MaterialRecord& rec, frm2Manage* owner) {
    OpenRecord(rec, owner, kModeEdit);
}

void frm7Melt::DisplayReview(const MaterialRecord& rec, frm2Manage* owner) {
    OpenRecord(rec, owner, kModeReview);
}

void frm7Melt::OpenRecord(const MaterialRecord& rec, frm2Manage* owner, int mode) {
    const bool review = mode == kModeReview;
    Trap("The melt glass could not be shown.", [&] {
        mode_ = mode;
        caption_ = review ? "Melt glass: review" : "Melt glass: edit";
        loading_ = true;
        saved_ = false;
        owner_ = owner;
        if (hooks_.enableOwner) hooks_.enableOwner(false);
        melt_ = rec;
        parent_ = ClearedMaterialRecord();
        melt_.GeneralState.Changes = 2;
        melt_.IndexState.Changes = 2;
        melt_.TransState.Changes = 2;
        saveAllowed_ = !review;
        ownerHidden_ = true;
        if (forms_) forms_->SetMeltFormOpen(true);
        if (review) {
            comAdd.caption = "&Save";
            comAdd.toolTip = "Add this material to the ostrel database";
        }
        FormLoad();
        LoadParent(melt_.Melt.MeltParentName.Text(), melt_.Melt.MeltParentSource.Text());
        if (!review) {
            comAdd.caption = "Accept changes";
            comAdd.toolTip = "Accept changes made to this melt glass";
        }
        pnlPolyType.caption = PolyTypeName(melt_.General.Polytype);
        WriteIndexTable();
        UpdateMeltDisplay();
        if (review) LockForm();
    });
    if (hooks_.show) hooks_.show(false);
}

void frm7Melt::FormLoad() {
    open_ = true;
    changed_ = false;
    waveBands_ = LoadWaveBands(list_.dataFolder());
    ResetForm(true);
    FillWaveBandList();
    loading_ = false;
    newMsg_.Display(NoticeText(), kNoticeTitle, false, 0, kNoticeKey);
}

void frm7Melt::ForceUnload() {
    saved_ = false;
    Unload();
}

void frm7Melt::comOKClick() {
    if (QueryClose()) Unload();
}

bool frm7Melt::HasUnsavedChanges() const {
    // Nothing can be saved before a parent is chosen, so there is nothing to lose either.
    return open_ && mode_ != kModeReview && changed_ &&
           !VbTrimCopy(melt_.Melt.MeltParentName.Text()).empty();
}

bool frm7Melt::QueryClose() {
    if (!HasUnsavedChanges()) return true;
    MaterialRecord named = melt_;
    BuildMeltName(named);
    const MsgAnswer answer =
        dialogs_.MsgBox("Save changes to " + named.General.GlassName.Text() + "?",
                        MsgButtons::YesNoCancel, MsgIcon::Question, caption_);
    if (answer == MsgAnswer::No) return true;
    if (answer != MsgAnswer::Yes) return false;
    // Yes saves only as the save button could: while it is off (no code, or no fit yet) the
    // user is told that the melt is incomplete and the form stays open.
    if (!comAdd.enabled) {
        dialogs_.MsgBox(kIncompleteMsg, MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    comAddClick();
    return !HasUnsavedChanges();
}

void frm7Melt::Unload() {
    if (!open_) return;
    open_ = false;
    if (ownerHidden_) {
        ownerHidden_ = false;
        if (forms_) forms_->SetMeltFormOpen(false);
        if (hooks_.enableOwner) hooks_.enableOwner(true);
    }
    owner_ = nullptr;
    if (hooks_.close) hooks_.close();
}

void frm7Melt::ResetForm(bool setCaption) {
    if (setCaption) {
        form.caption = caption_;
        comAdd.enabled = saveAllowed_;
    }
    InitGrid();
    comIndexFit.enabled = true;
    comIndexSort.enabled = true;
    comWaveBand.enabled = true;
    lstWaveBand.enabled = true;
    txtMeltCode.enabled = true;
    comShowDispConsts.enabled = false;
    comShowIndex.enabled = false;
    lblError.caption = "";
    pnlPolyType.caption = PolyTypeName(melt_.General.Polytype);
    UpdateMeltDisplay();
}

void frm7Melt::InitGrid() {
    Grid& g = ssRefInd;
    g.SetMaxCols(kCols);
    g.SetMaxRows(kRows);
    g.SetColumn(kColLetter, {" ", CellType::Text});
    g.SetColumnLocked(kColLetter, true);
    g.SetColumn(kColWave, {"wave [nm]", CellType::Float, 4, 10, 30000});
    g.SetColumn(kColIndex, {"melt glass index [user data]", CellType::Float, 7, 1, 9});
    g.SetColumn(kColParent, {"parent glass index [cat data]", CellType::Text});
    g.SetColumn(kColDiff, {"difference [user-cat]", CellType::Text});
    g.SetColumn(kColFit, {"difference [fit-cat]", CellType::Text});
    for (int c = kColParent; c <= kColFit; ++c) g.SetColumnLocked(c, true);
    g.SetColumnHidden(kColFit, true);
    g.ClearAll();
}

void frm7Melt::FillWaveBandList() {
    waveBandFilling_ = true;
    lstWaveBand.Clear();
    for (size_t i = 0; i < waveBands_.size(); ++i) {
        lstWaveBand.AddItem(waveBands_[i].Name, static_cast<int64_t>(i + 1));
    }
    waveBandFilling_ = false;
}

void frm7Melt::LockForm() {
    for (Control* c : std::initializer_list<Control*>{
             &comClear, &comWaveSelRefInd, &comClipPaste, &comIndexFit, &comIndexSort,
             &comMeltSchott, &comWaveBand, &comAdd, &lstWaveBand, &txtMeltCode}) {
        c->enabled = false;
    }
    for (int c = 1; c <= ssRefInd.MaxCols(); ++c) ssRefInd.SetColumnLocked(c, true);
}

// --- parent ---

void frm7Melt::SetParent(const MaterialRecord& picked) {
    melt_ = picked;
    parent_ = picked;
    melt_.IndexState.Ready = kFalse;
    changed_ = true;
    pnlPolyType.caption = PolyTypeName(melt_.General.Polytype);
    UpdateMeltDisplay();
    ssRefInd.ClearAll();
    comIndexFit.enabled = true;
    comShowDispConsts.enabled = false;
    comShowIndex.enabled = false;
    lblError.caption = "";
    ShowFitColumn(false);
}

void frm7Melt::comParentClick() {
    Trap("The parent glass could not be read.", [&] {
        if (!hooks_.pickParent) return;
        MaterialRecord picked = ClearedMaterialRecord();
        if (hooks_.pickParent(picked)) SetParent(picked);
    });
}

bool frm7Melt::LoadParent(const std::string& name, const std::string& source) {
    auto db = OpenGlassDatabase(kelmora_, dialogs_);
    if (!db) return false;
    std::vector<DbRow> rows;
    DbError error;
    if (!RunGlassQuery(*db, GlassQuery(VbTrimCopy(source)), rows, error)) {
        dialogs_.MsgBox("There is an error in the database query");
        return false;
    }
    const std::string wanted = UpperAscii(VbTrimCopy(name));
    for (const auto& row : rows) {
        if (UpperAscii(VbTrimCopy(DbText(row.Field("GlassName")))) != wanted) continue;
        MaterialRecord rec = ClearedMaterialRecord();
        if (!ReadGlassRow(row, rec, error)) return false;
        parent_ = rec;
        return true;
    }
    dialogs_.MsgBox("no match");
    return false;
}

// --- name and status ---

void frm7Melt::ApplyMeltCode() {
    const std::string text = VbTrimCopy(txtMeltCode.text.get());
    if (text == kCodePrompt) return;
    if (UpperAscii(text) != UpperAscii(melt_.Melt.MeltCode.Text())) {
        melt_.Melt.MeltCode.Set(text);
        changed_ = true;
        UpdateMeltDisplay();
    }
}

void frm7Melt::UpdateMeltDisplay() {
    auto& m = melt_.Melt;
    TrimText(m.MeltCode);
    TrimText(m.MeltParentName);
    TrimText(m.MeltParentSource);
    bool saveOk = true;
    const std::string code = m.MeltCode.Text();
    if (code.empty()) {
        txtMeltCode.text = kCodePrompt;
        saveOk = false;
    } else {
        txtMeltCode.text = code;
    }
    const bool parentOk = !m.MeltParentName.Text().empty();
    if (!parentOk) {
        lblMeltName.caption = "<- select parent material";
        saveOk = false;
    }
    pnlSide.visible = parentOk;
    for (Control* c : std::initializer_list<Control*>{&comClipPaste, &comClear, &comWaveSelRefInd,
                                                      &comMeltSchott, &fraWaveBand}) {
        c->enabled = parentOk;
    }
    for (Control* c : std::initializer_list<Control*>{&comClear, &comWaveSelRefInd, &comMeltSchott,
                                                      &fraWaveBand}) {
        c->visible = parentOk;
    }
    if (melt_.IndexState.Ready == 0) saveOk = false;
    ShowStatus();
    lblMeltName.caption =
        MeltCaption(m.MeltParentSource.Text(), m.MeltParentName.Text(), m.MeltCode.Text());
    comAdd.enabled = saveOk;
}

void frm7Melt::ShowStatus() {
    const bool ready = melt_.IndexState.Ready != 0;
    pnlStatus.caption = ready ? "Index: Ready" : "Index: NOT Ready";
    pnlStatus.backColour = ready ? kStatusGreen : kStatusRed;
    lblGlassCode.caption = ready ? std::to_string(melt_.General.GlassCode) : std::string();
}

void frm7Melt::ShowFitColumn(bool shown) {
    ssRefInd.SetColumnHidden(kColFit, !shown);
}

// --- the grid ---

double frm7Melt::ParentIndex(float wave, bool& ok) const {
    int16_t flag = 0;
    const double n =
        IndexFromPolynomial(parent_.General.PolyCoef, wave, parent_.General.Polytype, flag);
    ok = flag != 0;
    return n;
}

void frm7Melt::SetLetter(int row, float wave) {
    ssRefInd.SetText(kColLetter, row, SpectralLetter(wave));
}

void frm7Melt::AfterGridChange() {
    changed_ = true;
    ShowFitColumn(false);
    comIndexFit.enabled = true;
    comShowDispConsts.enabled = false;
    comShowIndex.enabled = false;
    melt_.IndexState.Ready = kFalse;
}

void frm7Melt::ssRefIndChange(int col, int row) {
    if (loading_) return;
    if (col == kColWave || col == kColIndex) UpdateIndexRow(row);
}

void frm7Melt::UpdateIndexRow(int row) {
    if (row < 1 || row > kRows) return;
    AfterGridChange();
    UpdateMeltDisplay();
    // A number typed or pasted is shown as the form writes its own, with its column's
    // decimals; the value the form reads from it stays the same.
    for (const int col : {kColWave, kColIndex}) {
        const std::string text = ssRefInd.Text(col, row);
        if (!text.empty() && IsValidNumber(text)) {
            ssRefInd.SetText(col, row, ssRefInd.FloatText(col, static_cast<float>(Val(text))));
        }
    }
    const float wave = CellFloat(ssRefInd, kColWave, row);
    double parent = 0;
    if (wave != 0.0f) {
        bool ok = false;
        parent = ParentIndex(wave, ok);
        SetLetter(row, wave);
    } else {
        ssRefInd.SetText(kColLetter, row, "");
    }
    const double user = CellFloat(ssRefInd, kColIndex, row);
    ssRefInd.SetText(kColParent, row, parent > 0 ? FormatNumber(parent, "0.0000000") : "  ");
    ssRefInd.SetText(kColDiff, row,
                     parent > 0 && user > 0 ? FormatNumber(user - parent, "0.000000") : "  ");
}

void frm7Melt::ReadIndexTable() {
    struct Pair {
        float wave;
        double value;
    };
    std::vector<Pair> pairs;
    for (int row = 1; row <= kRows; ++row) {
        const float wave = CellFloat(ssRefInd, kColWave, row);
        const double value = CellFloat(ssRefInd, kColIndex, row);
        if (wave != 0.0f && value != 0.0) pairs.push_back({wave, value});
    }
    auto& m = melt_.Melt;
    m.MeltIndexPoints = static_cast<int16_t>(pairs.size());
    if (pairs.empty()) return;
    SortDescending(pairs, [](const Pair& p) { return p.wave; });
    m.MeltIndexWave.fill(0);
    m.MeltIndexValue.fill(0);
    for (size_t i = 0; i < pairs.size(); ++i) {
        m.MeltIndexWave[i] = pairs[i].wave;
        m.MeltIndexValue[i] = pairs[i].value;
    }
    ssRefInd.ClearAll();
    WriteIndexTable();
}

void frm7Melt::WriteIndexTable() {
    const auto& m = melt_.Melt;
    std::string clip;
    for (int i = 0; i < m.MeltIndexPoints && i < kMaxMeltPoints; ++i) {
        const float wave = m.MeltIndexWave[static_cast<size_t>(i)];
        const double value = m.MeltIndexValue[static_cast<size_t>(i)];
        bool ok = false;
        const double parent = ParentIndex(wave, ok);
        if (i > 0) clip += "\n";
        clip += SpectralLetter(wave) + "\t" + ssRefInd.FloatText(kColWave, wave) + "\t" +
                ssRefInd.FloatText(kColIndex, static_cast<float>(value)) + "\t" +
                (parent > 0 ? FormatNumber(parent, "0.0000000") : "  ") + "\t" +
                (parent > 0 && value > 0 ? FormatNumber(value - parent, "0.000000") : "  ");
    }
    if (!clip.empty()) ssRefInd.SetClip(1, 1, clip);
}

std::vector<float> frm7Melt::ReadWavelengths() const {
    std::vector<float> waves;
    for (int row = 1; row <= kRows && waves.size() < size_t(kMaxMeltPoints); ++row) {
        const float wave = CellFloat(ssRefInd, kColWave, row);
        if (wave != 0.0f) waves.push_back(wave);
    }
    SortDescending(waves, [](float w) { return w; });
    return waves;
}

// --- the fit ---

void frm7Melt::FitMelt() {
    bool busy = true;
    dialogs_.SetBusy(true);
    Trap("The melt glass could not be fitted.", [&] {
        bool saveOk = true;
        ReadIndexTable();
        if (melt_.Melt.MeltIndexPoints < 4) {
            dialogs_.SetBusy(false);
            busy = false;
            dialogs_.MsgBox(kTooFewPairsMsg, MsgButtons::OK, MsgIcon::Exclamation);
            lblError.caption = "";
            comAdd.enabled = false;
            return;
        }
        changed_ = true;
        const std::vector<double> diff = MeltDifferences(melt_, parent_);
        ResampleMeltIndices(melt_, parent_, diff, dialogs_);

        constantsText_.clear();
        if (RefitMeltIndices(melt_, parent_, constantsText_, dialogs_)) {
            melt_.IndexState.Changes = static_cast<int16_t>(melt_.IndexState.Changes + 1);
            melt_.IndexState.Ready = kTrue;
        } else {
            lblError.caption = "";
            melt_.IndexState.Ready = kFalse;
        }
        const int points = melt_.General.IndexPoints;
        fitRms_ = points > 0 ? std::sqrt(melt_.Measured.FitError / points) : 0.0;

        if (melt_.IndexState.Ready != 0) {
            // The melt's own nd, vd, partial dispersions and glass code, from its new
            // polynomial: nothing derived is left as the parent had it.
            UpdateDerivedData(melt_);
            NormaliseRecord(melt_);
        }
        ShowFitDifferences();

        if (melt_.IndexState.Ready == 0) {
            saveOk = false;
            comIndexFit.enabled = true;
            comShowDispConsts.enabled = false;
            comShowIndex.enabled = false;
            ShowStatus();
        } else {
            comIndexFit.enabled = false;
            comShowDispConsts.enabled = true;
            comShowIndex.enabled = true;
            TrimText(melt_.Melt.MeltCode);
            if (melt_.Melt.MeltCode.Text().empty()) saveOk = false;
            ShowStatus();
        }
        comAdd.enabled = saveOk;
    });
    if (busy) dialogs_.SetBusy(false);
}

void frm7Melt::ShowFitDifferences() {
    const auto& m = melt_.Melt;
    const int16_t type = parent_.General.Polytype;
    double sum = 0;
    for (int i = 0; i < m.MeltIndexPoints; ++i) {
        const float wave = m.MeltIndexWave[static_cast<size_t>(i)];
        int16_t ok = 0;
        const double fitted = IndexFromPolynomial(melt_.General.PolyCoef, wave, type, ok);
        const double parent = IndexFromPolynomial(parent_.General.PolyCoef, wave, type, ok);
        const double d = fitted - parent;
        sum += d;
        ssRefInd.SetText(kColFit, i + 1, FormatNumber(d, "0.000000"));
    }
    const double mean = m.MeltIndexPoints > 0 ? sum / m.MeltIndexPoints : 0.0;
    lblError.caption = std::string(kAverageCaption) + FormatNumber(mean, "0.000000");
    ShowFitColumn(true);
}

// --- reports ---

std::string frm7Melt::ConstantsReport() const {
    return MeltConstantsReport(melt_, parent_);
}

std::string frm7Melt::ComparisonReport() const {
    return MeltComparisonReport(melt_, parent_);
}

void frm7Melt::comShowDispConstsClick() {
    dialogs_.MsgBox(ConstantsReport(), MsgButtons::OK, MsgIcon::None, "");
}

void frm7Melt::comShowIndexClick() {
    dialogs_.MsgBox(ComparisonReport(), MsgButtons::OK, MsgIcon::None, "Melt Maker");
}

std::vector<frm7Melt::DeltaPoint> frm7Melt::DeltaPoints() const {
    std::vector<DeltaPoint> points;
    const auto& m = melt_.Melt;
    for (int i = 0; i < m.MeltIndexPoints && i < kMaxMeltPoints; ++i) {
        bool ok = false;
        const float wave = m.MeltIndexWave[static_cast<size_t>(i)];
        const double parent = ParentIndex(wave, ok);
        if (ok) points.push_back({wave, m.MeltIndexValue[static_cast<size_t>(i)] - parent});
    }
    return points;
}

std::vector<frm7Melt::DeltaPoint> frm7Melt::DeltaCurve(int nSamples) const {
    std::vector<DeltaPoint> curve;
    if (melt_.IndexState.Ready == 0 || nSamples < 2) return curve;
    const double lo = parent_.General.IndexWvMin, hi = parent_.General.IndexWvMax;
    if (!(hi > lo)) return curve;
    const int16_t type = parent_.General.Polytype;
    for (int k = 0; k < nSamples; ++k) {
        const float wave = static_cast<float>(lo + (hi - lo) * k / (nSamples - 1));
        int16_t okMelt = 0, okParent = 0;
        const double melt = IndexFromPolynomial(melt_.General.PolyCoef, wave, type, okMelt);
        const double parent = IndexFromPolynomial(parent_.General.PolyCoef, wave, type, okParent);
        if (okMelt != 0 && okParent != 0) curve.push_back({wave, melt - parent});
    }
    return curve;
}

std::vector<WaveRange> frm7Melt::ExtrapolatedRanges() const {
    if (melt_.IndexState.Ready == 0) return {};
    return ostrel::ExtrapolatedRanges(melt_, parent_);
}

// --- grid commands ---

void frm7Melt::comClipPasteClick(const std::string& clipText) {
    Trap("The clipboard text could not be pasted.", [&] {
        const int first = ssRefInd.ActiveRow();
        const int rows = ssRefInd.Paste(clipText);
        for (int r = first; r < first + rows; ++r) UpdateIndexRow(r);
        lblError.caption = "";
    });
}

void frm7Melt::comClearClick() {
    ssRefInd.ClearAll();
    auto& m = melt_.Melt;
    m.MeltFlag = kFalse;
    m.MeltTransPoints = 0;
    m.MeltIndexPoints = 0;
    m.MeltIndexValue.fill(0);
    m.MeltTransThird.fill(0);
    m.MeltIndexWave.fill(0);
    for (auto& half : m.MeltTransPair) half.fill(0);
    melt_.IndexState.Ready = kFalse;
    changed_ = true;
    UpdateMeltDisplay();
}

void frm7Melt::comWaveSelRefIndClick() {
    try {
        if (ssRefInd.IsBlockMode()) ssRefInd.ClearSelection();
        const int row = ssRefInd.ActiveRow();
        if (row < 1 || !hooks_.pickWaves) return;
        int16_t count = 1;
        float wave = CellFloat(ssRefInd, kColWave, row);
        std::vector<float> waves;
        if (hooks_.pickWaves(count, wave, waves, 0) == -1) {
            if (count <= 1) {
                ssRefInd.SetText(kColWave, row, ssRefInd.FloatText(kColWave, wave));
                UpdateIndexRow(row);
            } else {
                for (size_t k = 0; k < waves.size(); ++k) {
                    const int r = row + static_cast<int>(k);
                    if (r > kRows) break;
                    ssRefInd.SetText(kColWave, r, ssRefInd.FloatText(kColWave, waves[k]));
                    UpdateIndexRow(r);
                }
            }
        }
        comIndexFit.enabled = true;
        comShowDispConsts.enabled = false;
        comShowIndex.enabled = false;
        lblError.caption = "";
        ShowFitColumn(false);
    } catch (const std::exception&) {
        // A failed pick leaves the grid as it is.
    }
}

void frm7Melt::comMeltSchottClick() {
    Trap("The melt sheet could not be used.", [&] {
        if (!hooks_.enterSheet) return;
        if (!hooks_.enterSheet(melt_)) return;
        ssRefInd.ClearAll();
        WriteIndexTable();
        AfterGridChange();
        lblError.caption = "";
        UpdateMeltDisplay();
    });
}

void frm7Melt::comWaveBandClick() {
    Trap("The waveband could not be stored.", [&] {
        const auto name =
            dialogs_.InputBox("Enter a name for this waveband", "Default wavebands for melts", "");
        if (!name || name->empty()) return;
        const std::vector<float> waves = ReadWavelengths();
        if (waves.size() < 3) return;
        waveBands_.push_back({*name, static_cast<int16_t>(waves.size()), waves});
        FillWaveBandList();
        SaveWaveBands(list_.dataFolder(), waveBands_);
    });
}

void frm7Melt::lstWaveBandClick() {
    if (waveBandFilling_ || loading_) return;
    const int index = lstWaveBand.listIndex();
    if (index < 0) return;
    const int64_t entry = lstWaveBand.ItemData(index);
    if (entry < 1 || entry > static_cast<int64_t>(waveBands_.size())) return;
    const MeltWaveBand& band = waveBands_[static_cast<size_t>(entry - 1)];
    ssRefInd.ClearAll();
    for (int i = 0; i < band.Count && i < kRows && i < static_cast<int>(band.Waves.size()); ++i) {
        ssRefInd.SetText(kColWave, i + 1,
                         ssRefInd.FloatText(kColWave, band.Waves[static_cast<size_t>(i)]));
        UpdateIndexRow(i + 1);
    }
    AfterGridChange();
    lblError.caption = "";
    UpdateMeltDisplay();
}

// --- saving ---

void frm7Melt::comAddClick() {
    if (mode_ == kModeReview) return;
    Trap("The melt glass could not be saved.", [&] {
        if (!AllSectionsReady(melt_)) {
            dialogs_.MsgBox(kIncompleteMsg, MsgButtons::OK, MsgIcon::Exclamation);
            return;
        }
        // What is saved carries the numbers of its own polynomial.
        UpdateDerivedData(melt_);
        UpdateGlassCode(melt_);
        NormaliseRecord(melt_);
        const std::string key = BuildMeltName(melt_);
        if (list_.ListContainsSupplied(melt_)) {
            dialogs_.MsgBox(key +
                                " is a catalog glass and cannot be overwritten!\n\nIf you really "
                                "want to use this data, then change the 'name' and /or 'source'.",
                            MsgButtons::OK, MsgIcon::Exclamation);
            return;
        }
        if (list_.ListContains(melt_)) {
            const MsgAnswer a = dialogs_.MsgBox(key +
                                                    " is already in your collection.\n\nDo you "
                                                    "want to overwrite the existing data?",
                                                MsgButtons::YesNo, MsgIcon::Question);
            if (a != MsgAnswer::Yes) return;
        }
        melt_.Melt.MeltFlag = kTrue;

        // Added (or replacing the one of the same key), then the list sorted and saved.
        MaterialRecord dated = melt_;
        dated.DateChanged = list_.errors().clock().Now();
        std::vector<MaterialRecord> copy = list_.CopyListOut();
        auto same = std::find_if(copy.begin(), copy.end(),
                                 [&](const MaterialRecord& r) { return SameMaterial(r, dated); });
        if (same != copy.end()) {
            *same = dated;
        } else {
            copy.push_back(dated);
        }
        std::stable_sort(copy.begin(), copy.end(),
                         [](const MaterialRecord& a, const MaterialRecord& b) {
                             return MaterialKey(a) < MaterialKey(b);
                         });
        if (!list_.CommitList(std::move(copy))) return;
        saved_ = true;
        changed_ = false;

        if (mode_ == kModeNew) {
            melt_ = ClearedMaterialRecord();
            parent_ = ClearedMaterialRecord();
            melt_.GeneralState.Ready = kFalse;
            melt_.IndexState.Ready = kFalse;
            melt_.TransState.Ready = kFalse;
            melt_.OtherState.Ready = kFalse;
            melt_.ThermalState.Ready = kTrue;
            ResetForm(true);
        } else if (mode_ == kModeEdit && owner_ &&
                   (!forms_ || forms_->GetCurrentForm() == kFormManage)) {
            owner_->UpdatesGlasssAftEdit();
        }
    });
}

}  // namespace ostrel
