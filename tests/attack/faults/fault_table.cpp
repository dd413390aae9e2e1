#include "attack/faults/fault_table.h"

#include <cstdio>
#include <cstring>

#include <string.h>

namespace zn::test {

namespace {

std::string kindOf(const Fault& fault) {
    std::string kind;
    if (fault.kind == "fail") kind = strerrorname_np(fault.number);
    if (fault.kind.starts_with("signal")) kind = std::string("SIG") + sigabbrev_np(fault.number) + fault.kind.substr(6);
    if (kind.empty()) kind = fault.kind;
    return kind + (fault.onwards ? " onwards" : "");
}

template <class... Values> std::string line(const char* call, const char* kind, Values... values) {
    char text[256];
    std::snprintf(text, sizeof text, "%-8s %-18s%8ld%8ld%8ld%8ld%9ld%8ld%9ld%8ld%10ld%7ld\n", call, kind, values...);
    return text;
}

} // namespace

std::string nameOf(const Fault& fault) {
    return std::string(kCallNames[static_cast<std::size_t>(fault.call)]) + " " + kindOf(fault);
}

void FaultTable::add(const Fault& fault, const Ending& ending, const Verdict& verdict) {
    Row& row = rows_[{fault.call, kindOf(fault)}];
    ++row.faults;
    row.passed += ending.status == 0;
    row.failed += ending.status > 0;
    row.ended += ending.signal != 0;
    row.earlier += verdict.found == Found::kEarlier;
    row.fresh += verdict.found == Found::kNew;
    row.withoutPage += verdict.found == Found::kWithoutPage;
    row.moving += verdict.found == Found::kMoving;
    row.leftovers += verdict.leftovers;
    row.complaints += !verdict.complaint.empty();
}

std::string FaultTable::text() const {
    if (rows_.empty()) return "";
    std::string text = "call     kind                faults  done 0  failed  killed  earlier     new  no page  moving"
                       " leftovers  wrong\n";
    Row sum;
    const auto lineOf = [](const char* call, const char* kind, const Row& row) {
        return line(call, kind, row.faults, row.passed, row.failed, row.ended, row.earlier, row.fresh, row.withoutPage,
                    row.moving, row.leftovers, row.complaints);
    };
    for (const auto& [key, row] : rows_) {
        text += lineOf(kCallNames[static_cast<std::size_t>(key.first)], key.second.c_str(), row);
        sum.faults += row.faults;
        sum.passed += row.passed;
        sum.failed += row.failed;
        sum.ended += row.ended;
        sum.earlier += row.earlier;
        sum.fresh += row.fresh;
        sum.withoutPage += row.withoutPage;
        sum.moving += row.moving;
        sum.leftovers += row.leftovers;
        sum.complaints += row.complaints;
    }
    return text + lineOf("all", "", sum);
}

} // namespace zn::test
