#include "tds_server/faults.h"

#include <algorithm>
#include <array>
#include <utility>

#include "util/text.h"

namespace luming::tds {
namespace {

constexpr std::array<std::pair<std::string_view, FaultKind>, 16> kNames = {{
    {"refuse-login", FaultKind::kRefuseLogin},
    {"refuse-database", FaultKind::kRefuseDatabase},
    {"silent-login", FaultKind::kSilentLogin},
    {"cut-login", FaultKind::kCutLogin},
    {"garbage-login", FaultKind::kGarbageLogin},
    {"cut-before", FaultKind::kCutBefore},
    {"cut-during", FaultKind::kCutDuring},
    {"cut-after", FaultKind::kCutAfter},
    {"cut-in-result", FaultKind::kCutInResult},
    {"cut-inside-row", FaultKind::kCutInsideRow},
    {"silent", FaultKind::kSilent},
    {"slow", FaultKind::kSlow},
    {"late", FaultKind::kLate},
    {"deadlock", FaultKind::kDeadlock},
    {"garbage", FaultKind::kGarbage},
    {"error", FaultKind::kError},
}};

bool IsOfLogin(FaultKind kind) {
  return kind <= FaultKind::kGarbageLogin;
}

}  // namespace

std::optional<FaultKind> FindFaultKind(std::string_view name) {
  const auto* found =
      std::find_if(kNames.begin(), kNames.end(), [&](const auto& entry) { return entry.first == name; });
  if (found == kNames.end()) return std::nullopt;
  return found->second;
}

void FaultList::Add(Fault fault) {
  const std::lock_guard lock(mutex_);
  faults_.push_back(std::move(fault));
}

int FaultList::Clear() {
  const std::lock_guard lock(mutex_);
  const auto waiting = std::count_if(faults_.begin(), faults_.end(), [](const Fault& f) { return f.times != 0; });
  faults_.clear();
  return static_cast<int>(waiting);
}

std::optional<Fault> FaultList::TakeAtLogin() {
  return Take(true, "");
}

std::optional<Fault> FaultList::TakeAtStatement(std::string_view sql) {
  return Take(false, sql);
}

std::optional<Fault> FaultList::Take(bool at_login, std::string_view sql) {
  const std::lock_guard lock(mutex_);
  const std::string text = LowerAscii(sql);
  for (Fault& fault : faults_) {
    const bool fits =
        IsOfLogin(fault.kind) == at_login && (at_login || text.find(LowerAscii(fault.statement)) != std::string::npos);
    if (!fits || fault.times == 0) continue;
    if (fault.skip > 0) {
      --fault.skip;
      continue;
    }
    if (fault.times > 0) --fault.times;
    return fault;
  }
  return std::nullopt;
}

}  // namespace luming::tds
