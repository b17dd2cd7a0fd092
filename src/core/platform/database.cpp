#include "core/platform/database.h"

#include <strings.h>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "core/platform/file_io.h"

namespace ostrel {

namespace {

DbFaultHook& FaultHook() {
    static DbFaultHook hook;
    return hook;
}

const DbValue& NullValue() {
    static const DbValue null;
    return null;
}

}  // namespace

double DbNumber(const DbValue& v, bool& ok) {
    ok = true;
    if (const auto* i = std::get_if<int64_t>(&v)) return static_cast<double>(*i);
    if (const auto* d = std::get_if<double>(&v)) return *d;
    if (const auto* s = std::get_if<std::string>(&v)) {
        const char* begin = s->c_str();
        while (*begin == ' ') ++begin;
        char* end = nullptr;
        const double x = std::strtod(begin, &end);
        if (end != begin) {
            while (*end == ' ') ++end;
            if (*end == '\0') return x;
        }
    }
    ok = false;
    return 0.0;
}

std::string DbText(const DbValue& v) {
    if (const auto* s = std::get_if<std::string>(&v)) return *s;
    if (const auto* i = std::get_if<int64_t>(&v)) return std::to_string(*i);
    if (const auto* d = std::get_if<double>(&v)) {
        char buf[40];
        auto r = std::to_chars(buf, buf + sizeof buf, *d);
        return std::string(buf, r.ptr);
    }
    return {};
}

int DbRow::Position(const std::string& name) const {
    if (!names_) return -1;
    for (size_t i = 0; i < names_->size(); ++i) {
        if (strcasecmp((*names_)[i].c_str(), name.c_str()) == 0) return static_cast<int>(i);
    }
    return -1;
}

const std::string& DbRow::Name(int position) const {
    static const std::string empty;
    if (!names_ || position < 0 || position >= static_cast<int>(names_->size())) return empty;
    return (*names_)[static_cast<size_t>(position)];
}

const DbValue& DbRow::Field(const std::string& name) const {
    return Field(Position(name));
}

const DbValue& DbRow::Field(int position) const {
    if (position < 0 || position >= FieldCount()) return NullValue();
    return values_[static_cast<size_t>(position)];
}

void SetDatabaseFaultHook(DbFaultHook hook) {
    FaultHook() = std::move(hook);
}

bool DbStepAllowed(const std::string& operation, const std::string& table, DbError& error) {
    if (operation == "add" || operation == "delete" || operation == "commit") KillPoint();
    const auto& hook = FaultHook();
    if (!hook || hook(operation, table)) return true;
    error.code = kDbErrorInjected;
    error.message = "Injected failure of " + operation + (table.empty() ? "" : " on " + table);
    return false;
}

}  // namespace ostrel
