// The material form's dn/dt and Other tabs: the model of the change of index with
// temperature and its coefficients, and the table of other properties.
#include <exception>
#include <functional>

#include "core/materialform/frm3new.h"
#include "core/optics/index_fit.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {

constexpr const char* kThermFormat = "0.000e+00";
constexpr int kDensityRow = 9;
constexpr int kStatusRow = 22;
constexpr int kRemarkRow = 24;

}  // namespace

const std::array<frm3New::OtherRow, frm3New::kOtherRows>& frm3New::OtherRows() {
    static const std::array<OtherRow, kOtherRows> rows = {{
        {"A -30/+70°C [10^-6/K]", "Thermal Expansion Coefficient", "T0.0"},
        {"A +20/+300°C [10^-6/K]", "Thermal Expansion Coefficient", "T0.0"},
        {"Tg [C]", "Transformation Temperature", "T0000"},
        {"T10^13.0 [C]", "Upper Annealing Point", "T0000"},
        {"T10^7.6 [C]", "Softening Point", "T0.0"},
        {"Cp [J/(g.K)]", "Specific Heat Capacity", "T0.000"},
        {"l [W/(m.K)]", "Thermal Conductivity", "T0.000"},
        {"", "", ""},
        {"p [g/cm³]", "Density   [REQUIRED]", "F0.000"},
        {"E [10^3 N/mm²]", "Youngs Modulus", "T000"},
        {"u ", "Poisson Ratio", "T0.000"},
        {"K [10^-6 mm²/N]", "Torsion", "T0.00"},
        {"HK", "Knoop Hardness", "T000"},
        {"", "", ""},
        {"CR", "Climate resistance", "T0"},
        {"FR", "Stain resistance", "T0"},
        {"SR", "Acid resistance", "T0.0"},
        {"AR", "Alkaline resistance", "T0.0"},
        {"PR", "Phosphate resistance", "T0.0"},
        {"", "", ""},
        {"Bubble", "", "T0"},
        {"Status", "R-Recomend, E-Eco, A-Available?, O-Obsolete", "T0"},
        {"Price/Volume", "Relative to BK7=10", "T0.0"},
        {"Remarks", "", ""},
    }};
    return rows;
}

namespace {

// The text field of an Other row, as its stored text and a setter cutting to its width.
struct OtherField {
    std::string text;
    std::function<void(const std::string&)> set;
    bool present = false;
};

OtherField FieldOfRow(OtherData& o, int row) {
    auto make = [](auto& f) {
        return OtherField{f.Text(), [&f](const std::string& t) { f.Set(t); }, true};
    };
    switch (row) {
        case 1:
            return make(o.A3070);
        case 2:
            return make(o.A20300);
        case 3:
            return make(o.Tg);
        case 4:
            return make(o.T1013);
        case 5:
            return make(o.T1076);
        case 6:
            return make(o.Cp);
        case 7:
            return make(o.lambda);
        case 10:
            return make(o.EMod);
        case 11:
            return make(o.Poisson);
        case 12:
            return make(o.Torsion);
        case 13:
            return make(o.Knoop);
        case 15:
            return make(o.CR);
        case 16:
            return make(o.FR);
        case 17:
            return make(o.SR);
        case 18:
            return make(o.AR);
        case 19:
            return make(o.PR);
        case 21:
            return make(o.Bubble);
        case 22:
            return make(o.Status);
        case 23:
            return make(o.Price);
        case 24:
            return make(o.REMark);
        default:
            return {};
    }
}

}  // namespace

// ---------------------------------------------------------------------------------------
// dn/dt

void frm3New::ShowThermal() {
    const auto& t = rec_.Thermal;
    const int model = t.dndttype;
    static const char* kLabels[7] = {"D0", "D1", "D2", "E0", "E1", "lambda TK", "ref. temp °C"};
    for (int i = 0; i < 7; ++i) {
        const auto k = static_cast<size_t>(i);
        const bool shown = model == 2 || (model == 1 && i == 0);
        txtTherm[k].visible = shown;
        lblTherm[k].visible = shown;
        lblTherm[k].caption = model == 1 && i == 0 ? "dn/dt" : kLabels[i];
    }
    lblDnDtLinear.caption =
        model == 1 ? "Abs. value 20°C at 546nm (e) [units: 10^-6/K]" : std::string();
    lblDnDtLinear.visible = model == 1;
    const float values[7] = {model == 1 ? t.dndt_lin : t.dndt_D0,
                             t.dndt_D1,
                             t.dndt_D2,
                             t.dndt_E0,
                             t.dndt_E1,
                             t.dndt_LamdaTK,
                             t.dndt_RefTemp};
    for (size_t k = 0; k < 7; ++k) txtTherm[k].ShowNumber(FormatNumber(values[k], kThermFormat));
}

void frm3New::lstThermalClick() {
    if (loading_ || mode_ == kModeReview) return;
    const int index = lstThermal.listIndex();
    if (index < 0 || index > 2) return;
    if (index != rec_.Thermal.dndttype) MarkModified();
    rec_.Thermal.dndttype = static_cast<int16_t>(index);
    ++rec_.ThermalState.Changes;
    ShowThermal();
}

void frm3New::txtThermValidate(int box) {
    if (mode_ == kModeReview || box < 0 || box > 6) return;
    auto& t = rec_.Thermal;
    const std::string text = txtTherm[static_cast<size_t>(box)].text;
    if (!IsValidNumber(text)) return;  // kept as typed, the stored figure stands
    float* fields[7] = {t.dndttype == 1 ? &t.dndt_lin : &t.dndt_D0,
                        &t.dndt_D1,
                        &t.dndt_D2,
                        &t.dndt_E0,
                        &t.dndt_E1,
                        &t.dndt_LamdaTK,
                        &t.dndt_RefTemp};
    const auto v = static_cast<float>(Val(text));
    float& field = *fields[box];
    if (t.dndttype != 0 && v != field) {
        field = v;
        MarkModified();
        ++rec_.ThermalState.Changes;
    }
    ShowThermal();
}

// ---------------------------------------------------------------------------------------
// Other

void frm3New::BuildOtherGrid() {
    Grid& g = ssOther;
    g.SetRedraw(false);
    g.SetMaxCols(3);
    g.SetMaxRows(kOtherRows);
    g.SetColumn(1, {"Parameter"});
    g.SetColumn(2, {"Value"});
    g.SetColumn(3, {"Notes"});
    g.SetColumnLocked(1, true);
    g.SetColumnLocked(3, true);
    g.SetColumnLocked(2, mode_ == kModeReview);
    g.SetRedraw(true);
}

void frm3New::FillOtherGrid() {
    Grid& g = ssOther;
    g.SetRedraw(false);
    const auto& rows = OtherRows();
    for (int r = 1; r <= kOtherRows; ++r) {
        const OtherRow& row = rows[static_cast<size_t>(r - 1)];
        std::string value;
        const std::string format = row.format;
        const std::string pattern = format.empty() ? std::string() : format.substr(1);
        if (r == kDensityRow) {
            value = FormatNumber(rec_.General.Density, pattern);
        } else {
            const OtherField f = FieldOfRow(rec_.Other, r);
            value = f.text;
            if (!value.empty() && !pattern.empty() && IsValidNumber(value) && r != kStatusRow) {
                value = FormatNumber(Val(value), pattern);
            }
        }
        g.SetText(1, r, row.label);
        g.SetText(2, r, value);
        g.SetText(3, r, row.note);
    }
    g.SetRedraw(true);
}

void frm3New::ssOtherChange(int col, int row) {
    if (mode_ == kModeReview || col != 2 || row < 1 || row > kOtherRows) return;
    MarkModified();
    try {
        const std::string typed = ssOther.Text(2, row);
        if (row == kDensityRow) {
            const double v = VbTrimCopy(typed).empty() ? 0.0 : CellNumber(typed);
            if (v > 0.0) {
                rec_.General.Density = static_cast<float>(v);
                SetSectionReady(rec_.OtherState, true);
                ++rec_.OtherState.Changes;
            }
            ssOther.SetText(2, row, PlainNumberText(rec_.General.Density));
        } else if (row == kStatusRow) {
            const std::string letter = UpperAscii(VbTrimCopy(typed)).substr(0, 1);
            if (letter == "R" || letter == "E" || letter == "A" || letter == "O") {
                rec_.Other.Status.Set(letter);
                ++rec_.OtherState.Changes;
            }
            ssOther.SetText(2, row, rec_.Other.Status.Text());
        } else if (row == kRemarkRow) {
            rec_.Other.REMark.Set(typed);
            ++rec_.OtherState.Changes;
            ssOther.SetText(2, row, rec_.Other.REMark.Text());
        } else {
            OtherField f = FieldOfRow(rec_.Other, row);
            if (f.present && !typed.empty() && entry_.IsValidNumber(typed)) {
                f.set(VbTrimCopy(typed));
                ++rec_.OtherState.Changes;
            }
        }
        FillOtherGrid();
        RefreshPanels();
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay("The value could not be stored.", e.what(), 0);
    }
}

void frm3New::ClearOther() {
    ssOther.ClearAll();
    rec_.General.Density = 0;
    rec_.Other = FreshRecord().Other;
    rec_.Other.Status.Set("A");
    SetSectionReady(rec_.OtherState, false);
    BuildOtherGrid();
    FillOtherGrid();
}

}  // namespace ostrel
