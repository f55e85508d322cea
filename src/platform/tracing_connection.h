#pragma once

#include <memory>

#include "platform/database.h"

namespace luming {

/// A connection whose statements, transaction steps included, are told to a trace in the order in which they were sent.
class TracingConnection : public Connection {
 public:
  TracingConnection(std::unique_ptr<Connection> inner, StatementTrace trace);

  void Open(std::string_view connection_string) override { inner_->Open(connection_string); }
  void Close() override { inner_->Close(); }
  bool IsOpen() const override { return inner_->IsOpen(); }
  using Connection::Execute;
  Recordset Execute(std::string_view sql) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;
  void SetHurry(bool hurry) override { inner_->SetHurry(hurry); }
  [[noreturn]] void Refuse(std::string_view sql, const Failure& reason) override;

 private:
  template <class Work>
  void Traced(std::string_view sql, Work&& work);

  std::unique_ptr<Connection> inner_;
  StatementTrace trace_;
};

}  // namespace luming
