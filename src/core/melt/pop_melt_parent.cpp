#include "core/melt/pop_melt_parent.h"

#include "core/external/kelmora_database.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {

popMeltParent::popMeltParent(Dialogs& dialogs, SettingsStore& settings, std::string kelmoraFolder,
                             std::vector<std::string> makers, Hooks hooks)
    : dialogs_(dialogs),
      settings_(settings),
      kelmora_(std::move(kelmoraFolder)),
      makers_(std::move(makers)),
      hooks_(std::move(hooks)),
      picked_(ClearedMaterialRecord()) {}

popMeltParent::~popMeltParent() = default;

bool popMeltParent::PickParent(MaterialRecord& record) {
    picked_ = ClearedMaterialRecord();
    accepted_ = false;
    loading_ = true;
    if (!Load()) return false;
    if (hooks_.showModal) hooks_.showModal(*this);
    if (open_) Unload();
    if (!accepted_) return false;
    record = picked_;
    return true;
}

bool popMeltParent::Load() {
    loading_ = true;
    accepted_ = false;
    db_ = OpenGlassDatabase(kelmora_, dialogs_);
    if (!db_) {
        loading_ = false;
        open_ = false;
        return false;
    }
    open_ = true;
    sortColumn_ = 1;
    cmbSortOrder.SetItems({"Sort by ID", "Sort by Material", "Sort by Code", "Sort by Index",
                           "Sort by V-Value", "Sort by Status!"});
    cmbSortOrder.SetListIndex(0);

    lstMakers.Clear();
    for (const auto& m : makers_) lstMakers.AddItem(m);
    Grid& g = ssGlasses;
    g.SetMaxCols(6);
    g.SetMaxRows(0);
    g.SetColumn(1, {"ID", CellType::Float, 0});
    g.SetColumn(2, {"Glass", CellType::Text});
    g.SetColumn(3, {"Code", CellType::Text});
    g.SetColumn(4, {"Index", CellType::Float, 5});
    g.SetColumn(5, {"V-Val", CellType::Float, 2});
    g.SetColumn(6, {"Status", CellType::Text});
    ssGlassesView.visible = false;
    cmbSortOrder.visible = false;
    lblSelGlass.visible = false;
    comOK.enabled = false;

    const std::string saved = settings_.GetSetting(kSection, kKeyMaker, "");
    for (int i = 0; i < lstMakers.ListCount(); ++i) {
        if (!saved.empty() && lstMakers.List(i) == saved) {
            lstMakers.SetListIndex(i);
            loading_ = false;
            lstMakersClick();
            break;
        }
    }
    loading_ = false;
    return true;
}

void popMeltParent::Unload() {
    if (accepted_) {
        settings_.SaveSetting(kSection, kKeyMaker,
                              VbTrimCopy(picked_.Melt.MeltParentSource.Text()));
    }
    db_.reset();
    rows_.clear();
    open_ = false;
}

bool popMeltParent::ApplyMakerQuery(const std::string& maker) {
    BusyPointer busy(dialogs_);
    rows_.clear();
    DbError error;
    if (!db_ || !RunGlassQuery(*db_, GlassQuery(maker), rows_, error)) {
        rows_.clear();
        dialogs_.SetBusy(false);
        dialogs_.MsgBox(kQueryFailedMsg);
        return false;
    }
    return true;
}

void popMeltParent::lstMakersClick() {
    if (loading_) return;
    const int index = lstMakers.listIndex();
    if (index < 0) return;
    BusyPointer busy(dialogs_);
    const std::string maker = lstMakers.List(index);
    picked_.Melt.MeltParentSource.Set(maker);
    ApplyMakerQuery(maker);
    FillGlasses();
    ssGlassesView.visible = true;
    cmbSortOrder.visible = true;
    lblSelGlass.visible = false;
    comOK.enabled = false;
}

void popMeltParent::FillGlasses() {
    // The grid shows its cells as written: index and V-value are written with their
    // columns' decimals.
    auto shown = [](const DbValue& v, const char* pattern) {
        const std::string text = DbText(v);
        return IsValidNumber(text) ? FormatNumber(Val(text), pattern) : text;
    };
    // A maker without rows gives an empty grid.
    std::string clip;
    int count = 0;
    for (const auto& row : rows_) {
        if (count > 0) clip += "\n";
        clip += DbText(row.Field("GlassID")) + "\t  " + DbText(row.Field("GlassName")) + "\t" +
                DbText(row.Field("GlassCode")) + "\t" + shown(row.Field("nd"), "0.00000") + "\t" +
                shown(row.Field("vd"), "0.00") + "\t" + StatusText(DbText(row.Field("Status")));
        ++count;
    }
    Grid& g = ssGlasses;
    g.SetMaxRows(count);
    g.ClearAll();
    if (count > 0) g.SetClip(1, 1, clip);
    for (int c = 1; c <= g.MaxCols(); ++c) g.SetColumnLocked(c, true);
    SortGrid(sortColumn_, true);
}

void popMeltParent::SortGrid(int column, bool ascending) {
    if (loading_) return;
    std::vector<SortKey> keys{{column, ascending}};
    if (column == 6) keys.push_back({2, ascending});
    ssGlasses.Sort(1, ssGlasses.MaxRows(), keys);
}

void popMeltParent::cmbSortOrderClick() {
    if (loading_) return;
    const int index = cmbSortOrder.listIndex();
    if (index < 0) return;
    sortColumn_ = static_cast<int16_t>(index + 1);
    SortGrid(sortColumn_, true);
}

void popMeltParent::ssGlassesClick(int col, int row) {
    if (col < 1 || row < 1 || row > ssGlasses.MaxRows()) return;
    const std::string id = ssGlasses.Text(1, row);
    const std::string name = ssGlasses.Text(2, row);
    picked_.Melt.MeltParentName.Set(name);
    lblSelGlass.caption = "Select glass: " + picked_.Melt.MeltParentSource.Text() + "  " + name;
    lblSelGlass.visible = true;
    SelectRow(id);
    comOK.enabled = true;
}

void popMeltParent::SelectRow(const std::string& id) {
    for (const auto& row : rows_) {
        if (DbText(row.Field("GlassID")) != VbTrimCopy(id)) continue;
        const MeltData melt = picked_.Melt;
        MaterialRecord rec = ClearedMaterialRecord();
        DbError error;
        ReadGlassRow(row, rec, error);
        rec.Melt = melt;
        picked_ = rec;
        return;
    }
    dialogs_.MsgBox("no match");
}

void popMeltParent::comOKClick() {
    accepted_ = true;
    Unload();
}

void popMeltParent::comCancelClick() {
    accepted_ = false;
    Unload();
}

}  // namespace ostrel
