#include "core/external/external_file.h"

#include <cstring>
#include <filesystem>

#include "core/material/glasses_list.h"

namespace ostrel {

namespace {

std::filesystem::path FileIn(const std::string& folder, const char* name) {
    return std::filesystem::path(folder + name);
}

}  // namespace

bool ReadExternalRecords(const std::string& folder, std::vector<ExternalRecord>& records,
                         bool& present, FileError& error) {
    const auto path = FileIn(folder, kExternalFileName);
    std::error_code ec;
    present = std::filesystem::is_regular_file(path, ec);
    if (!present) return true;
    std::string bytes;
    if (!ReadWholeFile(path, bytes, error)) return false;
    records.clear();
    for (size_t at = 0; at < bytes.size(); at += kExternalRecordSize) {
        // A short last record reads as if padded with zeros.
        unsigned char image[kExternalRecordSize] = {};
        std::memcpy(image, bytes.data() + at, std::min(kExternalRecordSize, bytes.size() - at));
        ExternalRecord rec;
        FromBytes(image, rec);
        if (rec.GlassName.IsBlank() || rec.GlassName.HasNul()) continue;
        records.push_back(rec);
    }
    return true;
}

bool ReadExternalFile(const std::string& folder, std::vector<MaterialRecord>& records,
                      FileError& error) {
    std::vector<ExternalRecord> file;
    bool present = false;
    if (!ReadExternalRecords(folder, file, present, error)) return false;
    if (!present) return true;
    records.clear();
    for (const auto& ext : file) {
        MaterialRecord rec = ClearedMaterialRecord();
        FromExternalRecord(ext, rec.General);
        records.push_back(rec);
    }
    return true;
}

UpdateCounts MergeIntoExternalList(std::vector<MaterialRecord>& records,
                                   const std::vector<MaterialRecord>& source, int first, int last,
                                   bool overwrite) {
    UpdateCounts counts;
    for (int i = std::max(first, 1); i <= last && i <= static_cast<int>(source.size()); ++i) {
        const MaterialRecord& src = source[static_cast<size_t>(i - 1)];
        bool found = false;
        for (auto& rec : records) {
            if (SameMaterial(rec, src)) {
                if (overwrite) rec = src;
                ++(overwrite ? counts.replaced : counts.kept);
                found = true;
                break;
            }
        }
        if (!found) {
            records.push_back(src);
            ++counts.added;
        }
    }
    return counts;
}

std::string ExternalFileImage(const std::vector<ExternalRecord>& records) {
    std::string bytes(records.size() * kExternalRecordSize, '\0');
    for (size_t i = 0; i < records.size(); ++i) {
        ToBytes(records[i],
                reinterpret_cast<unsigned char*>(bytes.data()) + i * kExternalRecordSize);
    }
    return bytes;
}

namespace {

std::vector<ExternalRecord> ToExternalList(const std::vector<MaterialRecord>& records) {
    std::vector<ExternalRecord> out;
    out.reserve(records.size());
    for (const auto& rec : records) {
        ExternalRecord ext;  // zeros, reserved bytes included
        ToExternalRecord(rec.General, ext);
        out.push_back(ext);
    }
    return out;
}

}  // namespace

bool PrepareExternalFile(const std::string& folder, const std::vector<ExternalRecord>& records,
                         PreparedFile& prepared, FileError& error) {
    prepared.Discard();
    if (records.empty()) return true;
    return prepared.Prepare(FileIn(folder, kExternalFileName), ExternalFileImage(records), error);
}

bool PrepareExternalFile(const std::string& folder, const std::vector<MaterialRecord>& records,
                         PreparedFile& prepared, FileError& error) {
    return PrepareExternalFile(folder, ToExternalList(records), prepared, error);
}

bool CommitExternalFile(PreparedFile& prepared, FileError& error) {
    if (!prepared.Pending()) return true;
    // A backup that cannot be made does not stop the update.
    return prepared.Commit(error, prepared.Target().parent_path() / kExternalBackupName);
}

bool RewriteExternalFile(const std::string& folder, const std::vector<ExternalRecord>& records,
                         FileError& error) {
    PreparedFile prepared;
    return PrepareExternalFile(folder, records, prepared, error) &&
           CommitExternalFile(prepared, error);
}

bool WriteExternalFile(const std::string& folder, const std::vector<MaterialRecord>& records,
                       FileError& error) {
    return RewriteExternalFile(folder, ToExternalList(records), error);
}

}  // namespace ostrel
