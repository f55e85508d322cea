#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "frame/app_context.h"
#include "platform/statement.h"

namespace luming {

/// The few routines through which screens reach the database. Texts go in unescaped and keys are compared by LIKE, so a
/// value holding "%" or "_" matches by pattern.

/// Opens `Cn` if it is not open; a failure brings up the connection dialog, modally.
void ConnectDb(AppContext& app);

/// Reads into `rs`. A failure shows the common box and leaves `rs` closed; after a lost connection it also reconnects.
/// The statement is not repeated, so the caller's first use of `rs` fails into the caller's own trap.
void OpenRs(AppContext& app, Recordset& rs, std::string_view sql);
void OpenRs(AppContext& app, Recordset& rs, const Statement& statement);

void CloseRs(Recordset& rs) noexcept;

/// Runs a statement. @return false after a failure, which was shown
bool ExecSql(AppContext& app, std::string_view sql);
bool ExecSql(AppContext& app, const Statement& statement);

/// Whether a row of `table` has `value` in `field` (by LIKE). Has no trap: throws Failure.
bool GetField(AppContext& app, std::string_view table, std::string_view field, std::string_view value,
              ValueSource source = {});

/// Storehouse stock of a drug in smallest units, as text; "0" when there is no such drug.
std::string GetWarehouseStock(AppContext& app, std::string_view drug_code);

/// True when `quantity` (smallest units) is strictly greater than the storehouse's stock.
bool ExceedsWarehouseStock(AppContext& app, std::string_view drug_code, double quantity);

/// The common error box: number, description, source.
void ShowDbError(AppContext& app, const Failure& failure);

/// Runs `work`; whatever fails there is shown in the common box. @return whether it ran through
template <class Work>
bool Trapped(AppContext& app, Work&& work) {
  try {
    work();
    return true;
  } catch (const std::exception& fault) {
    ShowDbError(app, AsFailure(fault));
    return false;
  }
}

/// Runs `work`; a Failure of it names what it is about ahead of its description.
template <class Work>
void About(const std::string& what, Work&& work) {
  try {
    work();
  } catch (const Failure& failure) {
    throw Failure(failure.number(), "【" + what + "】" + failure.description(), failure.source());
  }
}

/// A save: opens `Cn` if it is not open, begins, runs `work`, commits. On any failure rolls back, shows the common box
/// and reports false.
bool InTransaction(AppContext& app, const std::function<void()>& work);

}  // namespace luming
