#include "core/shell/log.h"

#include <cstdio>
#include <fstream>
#include <system_error>

#include "core/platform/ole_date.h"

namespace ostrel {

std::string cLog::TimeText() const {
    CivilDateTime t = CivilFromOleDate(clock_.Now());
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", t.hour, t.minute, t.second);
    return buf;
}

void cLog::Append(const std::string& line) {
    std::ofstream out(path_, std::ios::app | std::ios::binary);
    if (out) out << line << "\n";
}

void cLog::LogOpen() {
    if (!enabled_) return;
    std::error_code ec;
    std::filesystem::remove(path_, ec);
    Append("Log Opened " + TimeText());
}

void cLog::LogClose() {
    if (!enabled_) return;
    Append("Log Closed " + TimeText());
}

void cLog::LogWrite(const std::string& szMsg) {
    if (!enabled_) return;
    Append(szMsg);
}

}  // namespace ostrel
