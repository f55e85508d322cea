#include "support/fake_store.h"

namespace luming {

/// Knows whether it is open and whether a transaction runs, as a connection must.
class FakeConnection : public Connection {
 public:
  explicit FakeConnection(FakeStore& store) : store_(store) {}

  void Open(std::string_view connection_string) override {
    store_.sent_.push_back("open " + std::string(connection_string));
    ThrowNext(store_.open_failures_);
    open_ = true;
  }

  void Close() override {
    if (open_) store_.sent_.emplace_back("close");
    open_ = false;
    begun_ = false;
  }

  bool IsOpen() const override { return open_; }

  Recordset Execute(std::string_view sql) override {
    NeedOpen();
    const std::string text(sql);
    store_.sent_.push_back(text);
    ThrowNext(store_.failures_[text]);
    const auto answer = store_.answers_.find(text);
    if (answer == store_.answers_.end()) return {};
    Recordset rs(answer->second.columns);
    for (const FakeStore::Row& row : answer->second.rows) rs.AppendRow(row);
    return rs;
  }

  void BeginTrans() override { Step("begin", !begun_, true); }
  void CommitTrans() override { Step("commit", begun_, false); }
  void RollbackTrans() override { Step("rollback", begun_, false); }

 private:
  void NeedOpen() const {
    if (!open_) throw StandardFailure(failure::kClosedObject);
  }

  static void ThrowNext(std::deque<Failure>& failures) {
    if (failures.empty()) return;
    const Failure next = failures.front();
    failures.pop_front();
    throw next;
  }

  void Step(const std::string& name, bool allowed, bool begun) {
    NeedOpen();
    store_.sent_.push_back(name);
    if (!allowed) throw Failure(-2147168242, "没有活动的事务。");
    begun_ = begun;
  }

  FakeStore& store_;
  bool open_ = false;
  bool begun_ = false;
};

void FakeStore::Answer(const std::string& sql, std::vector<std::string> columns, std::vector<Row> rows) {
  answers_[sql] = {std::move(columns), std::move(rows)};
}

void FakeStore::Fail(const std::string& sql, Failure failure) {
  failures_[sql].push_back(std::move(failure));
}

std::unique_ptr<Connection> FakeStore::Connect() {
  ++connections_;
  return std::make_unique<FakeConnection>(*this);
}

std::vector<std::string> FakeStore::TakeSent() {
  std::vector<std::string> sent;
  sent.swap(sent_);
  return sent;
}

Failure LostServer() {
  return {failure::kGeneralProvider, "连接失败", "Microsoft OLE DB Provider for SQL Server"};
}

}  // namespace luming
