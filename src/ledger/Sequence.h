#pragma once
#include <QString>

namespace store {
class Database;
}

namespace ledger {

// The most distinct codes a journal can hold over its whole history.
inline constexpr int kMaxCodici = 100;

// Walks Eseguiti in date order over quantities alone and returns the first
// fault in words ("" when every sale finds enough pieces). A 101st distinct
// code bought fails with platform::IndexOutOfRange.
QString ControlloSequenza(store::Database& dbExe);

} // namespace ledger
