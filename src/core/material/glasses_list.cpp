#include "core/material/glasses_list.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <span>

#include "core/material/catalogue_record.h"
#include "core/material/material_record_codec.h"
#include "core/material/old_layouts.h"
#include "core/platform/file_io.h"
#include "core/platform/maker.h"
#include "core/platform/text.h"

namespace fs = std::filesystem;

namespace ostrel {
namespace {

std::string KeyOf(std::string_view name, std::string_view source) {
    return UpperCp1252(VbTrim(name)) + "|" + UpperCp1252(VbTrim(source));
}

bool UsableText(std::string_view raw) {
    return !VbTrim(raw).empty() && raw.find('\0') == std::string_view::npos;
}

// Adds a key unless the name or source is blank or holds a NUL; a key already present is
// left alone.
void AddKey(std::unordered_set<std::string>& keys, std::string_view name, std::string_view source) {
    if (!UsableText(name) || !UsableText(source)) return;
    keys.insert(KeyOf(name, source));
}

// Splits file content into records of the given length; a short last record is padded
// with zero bytes.
template <typename Fn>
void ForEachRecord(const std::string& content, size_t length, Fn&& fn) {
    std::vector<unsigned char> buf(length);
    for (size_t off = 0; off < content.size(); off += length) {
        size_t n = std::min(length, content.size() - off);
        std::fill(buf.begin(), buf.end(), 0);
        std::memcpy(buf.data(), content.data() + off, n);
        fn(buf.data());
    }
}

// A damaged file may hold point counts that its tables cannot: they are brought into the
// tables as a record is read, so that no form or writer steps past a table's end.
void FitCountsToTables(MaterialRecord& rec) {
    auto fit = [](int16_t& count, int most) { count = std::clamp<int16_t>(count, 0, most); };
    fit(rec.General.IndexPoints, kMaxIndexPoints);
    fit(rec.Measured.TransPoints, kMaxTransPoints);
    fit(rec.Melt.MeltIndexPoints, kMaxMeltPoints);
    fit(rec.Melt.MeltTransPoints, kMaxMeltPoints);
}

std::string Label(const MaterialRecord& rec) {
    return rec.General.GlassName.Text() + " - " + rec.General.Source.Text();
}

}  // namespace

std::string MaterialKeyOf(std::string_view name, std::string_view source) {
    return KeyOf(name, source);
}

std::string MaterialKey(const MaterialRecord& rec) {
    return KeyOf(rec.General.GlassName.Raw(), rec.General.Source.Raw());
}

bool SameMaterial(const MaterialRecord& a, const MaterialRecord& b) {
    return MaterialKey(a) == MaterialKey(b);
}

bool NameUsable(const MaterialRecord& rec) {
    return UsableText(rec.General.GlassName.Raw()) && UsableText(rec.General.Source.Raw());
}

GlassesList::GlassesList(std::string dataFolder, ErrorDisplayer& errors)
    : folder_(std::move(dataFolder)), errors_(errors) {}

bool GlassesList::ListAdd(const MaterialRecord& rec, bool overwrite) {
    if (!NameUsable(rec)) return false;
    const std::string key = MaterialKey(rec);
    if (customKeys_.count(key)) {
        if (!overwrite) return false;
        for (auto& existing : customList_) {
            if (SameMaterial(existing, rec)) {
                existing = rec;
                return true;
            }
        }
        return false;
    }
    customKeys_.insert(key);
    customList_.push_back(rec);
    return true;
}

bool GlassesList::ListAddDated(MaterialRecord rec, bool overwrite) {
    rec.DateChanged = errors_.clock().Now();
    return ListAdd(rec, overwrite);
}

bool GlassesList::ListContains(const MaterialRecord& rec) const {
    return customKeys_.count(MaterialKey(rec)) > 0;
}

bool GlassesList::GetMaterial(int index, MaterialRecord& rec) const {
    if (index < 1 || index > CustomCount()) return false;
    rec = customList_[static_cast<size_t>(index - 1)];
    return true;
}

void GlassesList::ReplaceList(std::vector<MaterialRecord> list) {
    customList_ = std::move(list);
    RebuildKeys();
}

void GlassesList::RebuildKeys() {
    customKeys_.clear();
    for (const auto& rec : customList_) {
        AddKey(customKeys_, rec.General.GlassName.Raw(), rec.General.Source.Raw());
    }
}

namespace {

// The list's rule for the records of its file, met in file order: a record is listed when
// its name and source are usable and no record before it had the same key.
class ListingRule {
  public:
    explicit ListingRule(std::uintmax_t records) {
        keys_.reserve(static_cast<size_t>(std::min<std::uintmax_t>(records, 1u << 20)));
    }
    bool Lists(const unsigned char* image) {
        const auto* bytes = reinterpret_cast<const char*>(image);
        const std::string_view name(bytes + material_offset::kGlassName, 30);
        const std::string_view source(bytes + material_offset::kSource, 30);
        return UsableText(name) && UsableText(source) && keys_.insert(KeyOf(name, source)).second;
    }

  private:
    std::unordered_set<std::string> keys_;
};

}  // namespace

std::optional<MaterialRecord> GlassesList::ReadListedMaterial(const std::string& dataFolder,
                                                              int index) {
    if (index < 1) return std::nullopt;
    PositionedFile file;
    FileError err;
    if (!file.Open(fs::path(dataFolder) / kCustomFileName, err)) return std::nullopt;
    // Of each record before it only the name and source are read: the material's place in
    // the file is its position in the list when no record before it was passed over.
    // A short last record reads as if padded with zero bytes, as the list reads it.
    const std::uintmax_t records = (file.Size() + kMaterialRecordSize - 1) / kMaterialRecordSize;
    file.MapForReading();
    MaterialImage image{};
    ListingRule rule(std::min<std::uintmax_t>(records, static_cast<std::uintmax_t>(index)));
    int position = 0;
    for (std::uintmax_t i = 0; i < records; ++i) {
        const std::uintmax_t at = i * kMaterialRecordSize;
        std::fill_n(image.begin(), material_offset::kKeyEnd, 0);
        if (file.ReadAt(at, image.data(), material_offset::kKeyEnd, err) < 0) return std::nullopt;
        if (!rule.Lists(image.data()) || ++position != index) continue;
        image.fill(0);
        if (file.ReadAt(at, image.data(), image.size(), err) < 0) return std::nullopt;
        MaterialRecord rec;
        FromBytes(image.data(), rec);
        FitCountsToTables(rec);
        return rec;
    }
    return std::nullopt;
}

std::optional<std::vector<MaterialSummary>> GlassesList::ReadListedSummaries(
    const std::string& dataFolder) {
    const fs::path current = fs::path(dataFolder) / kCustomFileName;
    std::error_code ec;
    if (!fs::exists(current, ec)) return std::nullopt;
    std::vector<MaterialSummary> out;
    const auto size = fs::file_size(current, ec);
    const std::uintmax_t records = ec ? 0 : size / kMaterialRecordSize + 1;
    out.reserve(static_cast<size_t>(records));
    ListingRule rule(records);
    MaterialImage tail{};
    auto take = [&](std::string_view piece) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(piece.data());
        const size_t whole = piece.size() / kMaterialRecordSize;
        for (size_t i = 0; i < whole; ++i) {
            const unsigned char* image = bytes + i * kMaterialRecordSize;
            if (rule.Lists(image)) SummaryFromBytes(image, out.emplace_back());
        }
        // Only the last piece can end in part of a record: it reads as if padded with zeros.
        const size_t rest = piece.size() - whole * kMaterialRecordSize;
        if (rest == 0) return;
        tail.fill(0);
        std::memcpy(tail.data(), bytes + whole * kMaterialRecordSize, rest);
        if (rule.Lists(tail.data())) SummaryFromBytes(tail.data(), out.emplace_back());
    };
    // Pieces small enough to stay in the processor's cache while their fields are read.
    constexpr size_t kRecordsPerPiece = 8;
    FileError err;
    if (!ReadFileInPieces(current, kRecordsPerPiece * kMaterialRecordSize, take, err)) {
        return std::nullopt;
    }
    return out;
}

bool GlassesList::LoadCustomFile() {
    customList_.clear();
    customKeys_.clear();
    loadFailed_ = false;
    const fs::path folder(folder_);
    FileError err;
    std::string content;

    const fs::path current = folder / kCustomFileName;
    std::error_code ec;
    if (fs::exists(current, ec)) {
        // Records are decoded straight into the list, which is sized once, from pieces of
        // the file read one after another: a list of thousands of materials loads at close
        // to the speed of reading its bytes, and the file is never held whole beside it.
        const auto size = fs::file_size(current, ec);
        if (!ec) customList_.reserve(static_cast<size_t>(size) / kMaterialRecordSize + 1);
        std::string tail;
        auto take = [&](std::string_view piece) {
            const auto* bytes = reinterpret_cast<const unsigned char*>(piece.data());
            const size_t whole = piece.size() / kMaterialRecordSize;
            for (size_t i = 0; i < whole; ++i) {
                MaterialRecord& rec = customList_.emplace_back();
                FromBytes(bytes + i * kMaterialRecordSize, rec);
                FitCountsToTables(rec);
                if (!NameUsable(rec) || !customKeys_.insert(MaterialKey(rec)).second) {
                    customList_.pop_back();
                }
            }
            // Only the last piece can end in part of a record.
            tail.assign(piece.substr(whole * kMaterialRecordSize));
        };
        constexpr size_t kRecordsPerPiece = 64;
        if (!ReadFileInPieces(current, kRecordsPerPiece * kMaterialRecordSize, take, err)) {
            customList_.clear();
            customKeys_.clear();
            loadFailed_ = true;
            errors_.ErrorDisplay(
                "The custom material list could not be read:\n" + err.message +
                    "\n\nChanges to the list will not be saved until the file can be read.",
                "ReadCustomFile: " + err.message, err.code);
            return false;
        }
        if (!tail.empty()) {
            ForEachRecord(tail, kMaterialRecordSize, [&](const unsigned char* image) {
                MaterialRecord rec = FromBytes(std::span<const unsigned char, kMaterialRecordSize>(
                    image, kMaterialRecordSize));
                FitCountsToTables(rec);
                ListAdd(rec, false);
            });
        }
        return true;
    }

    // No current file: convert the newest older file found, and only that one.
    struct Older {
        const char* name;
        size_t length;
        MaterialRecord (*convert)(const unsigned char*);
    };
    const Older olders[] = {{kCustomFileV2Name, kRecordSizeV2, ConvertRecordV2},
                            {kCustomFileV1Name, kRecordSizeV1, ConvertRecordV1},
                            {kCustomFileV0Name, kRecordSizeOldest, ConvertRecordOldest}};
    for (const auto& older : olders) {
        const fs::path path = folder / older.name;
        if (!fs::exists(path, ec)) continue;
        if (!ReadWholeFile(path, content, err)) {
            loadFailed_ = true;
            errors_.ErrorDisplay("The older custom material file " + std::string(older.name) +
                                     " could not be read:\n" + err.message,
                                 "ConvertCustomFile: " + err.message, err.code);
            return false;
        }
        ForEachRecord(content, older.length, [&](const unsigned char* image) {
            MaterialRecord rec = older.convert(image);
            FitCountsToTables(rec);
            ListAdd(rec, false);
        });
        if (!SaveCustomFile()) {
            // The old file stays where it is, so nothing is lost.
            return false;
        }
        if (!RemoveFileIfPresent(path, err)) {
            errors_.ErrorDisplay("The older custom material file " + std::string(older.name) +
                                     " was converted but could not be removed:\n" + err.message,
                                 "ConvertCustomFile: " + err.message, err.code);
        }
        return true;
    }
    return true;
}

bool GlassesList::WriteCustomFile(const std::vector<MaterialRecord>& list) {
    if (loadFailed_) {
        errors_.ErrorDisplay(
            "The custom material list was not saved: its file could not be read at start-up, "
            "and saving now would replace it.",
            "WriteCustomFile: refused after a failed read", -1);
        return false;
    }
    const fs::path folder(folder_);
    const fs::path current = folder / kCustomFileName;
    FileError err;
    auto report = [&](const std::string& step) {
        errors_.ErrorDisplay("The custom material list could not be saved:\n" + err.message +
                                 "\n\nThe file on disk is unchanged.",
                             "WriteCustomFile (" + step + "): " + err.message, err.code);
        return false;
    };

    std::error_code ec;
    if (fs::exists(current, ec)) {
        if (!SnapshotFile(current, folder / kCustomBackupName, err)) return report("backup");
    }
    if (list.empty()) {
        if (!RemoveFileIfPresent(current, err)) return report("delete");
        return true;
    }
    // The image is made and written a piece at a time, so that a large list is never held
    // twice in memory.
    constexpr size_t kRecordsPerPiece = 64;
    std::string buffer;
    size_t next = 0;
    auto piece = [&](std::string_view& out) {
        if (next == list.size()) return false;
        const size_t count = std::min(kRecordsPerPiece, list.size() - next);
        buffer.assign(count * kMaterialRecordSize, '\0');
        auto* bytes = reinterpret_cast<unsigned char*>(buffer.data());
        for (size_t i = 0; i < count; ++i) ToBytes(list[next + i], bytes + i * kMaterialRecordSize);
        next += count;
        out = buffer;
        return true;
    };
    if (!WriteFileAtomicFrom(current, piece, err)) return report("write");
    return true;
}

bool GlassesList::SaveCustomFile() {
    return WriteCustomFile(customList_);
}

bool GlassesList::CommitList(std::vector<MaterialRecord> list) {
    if (!WriteCustomFile(list)) return false;
    ReplaceList(std::move(list));
    RefreshListForm();
    return true;
}

bool GlassesList::AddAndSave(const MaterialRecord& rec, bool overwrite) {
    MaterialRecord dated = rec;
    dated.DateChanged = errors_.clock().Now();
    if (!NameUsable(dated)) return false;
    // Work out the new list first, so that a failed save leaves everything as it was.
    const bool present = ListContains(dated);
    if (present && !overwrite) return false;
    if (!present) {
        customList_.push_back(dated);
        if (!SaveCustomFile()) {
            customList_.pop_back();
            return false;
        }
        customKeys_.insert(MaterialKey(dated));
    } else {
        auto it = std::find_if(customList_.begin(), customList_.end(),
                               [&](const MaterialRecord& r) { return SameMaterial(r, dated); });
        if (it == customList_.end()) return false;
        MaterialRecord old = *it;
        *it = dated;
        if (!SaveCustomFile()) {
            *it = old;
            return false;
        }
    }
    RefreshListForm();
    return true;
}

namespace {

template <typename Record, size_t Length>
void LoadNames(const std::string& lumbrakFolder, const char* fileName,
               std::unordered_set<std::string>& keys) {
    if (lumbrakFolder.empty()) return;
    const fs::path path = fs::path(lumbrakFolder) / fileName;
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return;
    std::string content;
    FileError err;
    if (!ReadWholeFile(path, content, err)) return;  // an unreadable file guards nothing
    Record rec;
    ForEachRecord(content, Length, [&](const unsigned char* image) {
        FromBytes(image, rec);
        AddKey(keys, rec.GlassName.Raw(), rec.Source.Raw());
    });
}

}  // namespace

void GlassesList::LoadCatalogueNames(const std::string& lumbrakFolder) {
    LoadNames<CatalogueRecord, kCatalogueRecordSize>(lumbrakFolder, kCatalogueFileName,
                                                     catalogueKeys_);
}

void GlassesList::LoadGenericNames(const std::string& lumbrakFolder) {
    LoadNames<ExternalRecord, kExternalRecordSize>(lumbrakFolder, kGenericFileName, genericKeys_);
}

bool GlassesList::ListContainsSupplied(const MaterialRecord& rec) const {
    const std::string key = MaterialKey(rec);
    return catalogueKeys_.count(key) || genericKeys_.count(key);
}

bool GlassesList::CheckOverwrite(const MaterialRecord& rec, bool allowOverwrite,
                                 std::string& message) const {
    const std::string key = MaterialKey(rec);
    const std::string label = Label(rec);
    message.clear();
    if (catalogueKeys_.count(key)) {
        message =
            label + " is already in the list of catalog materials, and cannot be overwritten!";
        return false;
    }
    if (genericKeys_.count(key)) {
        message = label + " is already in the " + maker::kName +
                  " supplied list of generic materials, and cannot be overwritten!";
        return false;
    }
    if (allowOverwrite && customKeys_.count(key)) {
        message =
            label + " is already in your list of custom materials.\nDo you want to overwrite it?";
        return false;
    }
    return true;
}

}  // namespace ostrel
