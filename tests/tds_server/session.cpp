#include "tds_server/session.h"

#include <algorithm>

#include "localdb/errors.h"
#include "tds_server/wire.h"

namespace luming::tds {
namespace {

using localdb::SqlError;
using std::string_view_literals::operator""sv;

constexpr unsigned kVersion = 0x74;
constexpr std::uint32_t kSmallestPacket = 512;
constexpr std::uint32_t kLargestPacket = 32767;
constexpr std::string_view kGarbage = "\x04\x01\x00\x10\x00\x00\x01\x00\x01\x02\x03\x05\x06\x07\x08\x09"sv;

int NumberOf(const Failure& failure) {
  const auto* error = dynamic_cast<const SqlError*>(&failure);
  return error ? error->native() : localdb::native::kUser;
}

// The text of a batch stands behind headers that tell of its transaction.
std::string BatchText(std::string_view body) {
  Reader reader(body);
  const std::size_t headers = reader.U32();
  reader.MoveTo(headers);
  return Utf8Of(reader.Rest());
}

}  // namespace

void Session::Run() {
  try {
    bool goes_on = LogIn();
    while (goes_on) {
      const std::optional<Message> message = channel_.Read();
      goes_on = message && Serve(*message);
    }
  } catch (const ProtocolError&) {
    // The client does not speak the protocol: it is cut off.
  }
  // Closing the store rolls back what the client left open.
  store_.reset();
  channel_.Shutdown();
  over_ = true;
}

void Session::Shutdown() {
  channel_.Shutdown();
}

bool Session::LogIn() {
  const std::optional<Fault> fault = rules_.faults.TakeAtLogin();
  const bool refused = fault && (fault->kind == FaultKind::kRefuseLogin || fault->kind == FaultKind::kRefuseDatabase);
  while (std::optional<Message> message = channel_.Read()) {
    if (fault && !refused) {
      if (fault->kind == FaultKind::kSilentLogin) WaitForEver();
      if (fault->kind == FaultKind::kGarbageLogin) channel_.SendRaw(kGarbage);
      return false;
    }
    if (message->type == MessageType::kPrelogin) {
      channel_.Send(PreloginAnswer());
      continue;
    }
    if (message->type != MessageType::kLogin) return false;
    const Login login = ReadLogin(message->body);
    if (fault) return RefuseLogin(login, fault->kind == FaultKind::kRefuseLogin ? 18456 : 4060);
    return AnswerLogin(login);
  }
  return false;
}

bool Session::RefuseLogin(const Login& login, int number) {
  Reply reply(std::nullopt);
  if (number == localdb::native::kNoStore) {
    reply.Error(number, SqlError(number, login.database).description());
  }
  reply.Error(18456, "用户“" + login.user + "”登录失败。");
  reply.Finish(true, false);
  channel_.Send(reply.bytes());
  return false;
}

bool Session::AnswerLogin(const Login& login) {
  if (login.version != kVersion) return false;
  if (login.user != rules_.user || login.password != rules_.password) return RefuseLogin(login, 18456);
  auto store = std::make_unique<LocalConnection>(rules_.directory, rules_.clock, rules_.busy_timeout);
  try {
    store->Open("Data Source=(localdb);Initial Catalog=" + login.database + ";");
  } catch (const Failure&) {
    return RefuseLogin(login, localdb::native::kNoStore);
  }
  // What arrives in the middle of a statement is an attention, or the client has gone.
  store->WaitWhile([this] { return WaitUndisturbed(std::chrono::milliseconds(0)); });
  store_ = std::move(store);
  const std::uint32_t packet = login.packet_size == 0 ? 4096 : login.packet_size;
  const std::uint32_t packet_size = std::clamp(packet, kSmallestPacket, kLargestPacket);
  Reply reply(std::nullopt);
  reply.ChangeText(Environment::kDatabase, login.database, "master");
  reply.Info(5701, "已将数据库上下文更改为“" + login.database + "”。");
  reply.ChangeCollation();
  reply.ChangeText(Environment::kLanguage, "简体中文", "");
  reply.AcceptLogin();
  reply.ChangeText(Environment::kPacketSize, std::to_string(packet_size), "4096");
  reply.Finish(false, false);
  channel_.Send(reply.bytes());
  channel_.set_packet_size(packet_size);
  return true;
}

bool Session::Serve(const Message& message) {
  switch (message.type) {
    case MessageType::kBatch:
      return RunText(BatchText(message.body));
    case MessageType::kAttention:
      return AnswerAttention();
    default:
      return false;
  }
}

bool Session::RunText(const std::string& sql) {
  const std::optional<Fault> fault = rules_.faults.TakeAtStatement(sql);
  if (!fault) return RunAndAnswer(sql, fault);
  switch (fault->kind) {
    case FaultKind::kCutBefore:
      return false;
    case FaultKind::kSilent:
      WaitForEver();
      return false;
    case FaultKind::kSlow:
      // What waits is the attention; the reading loop answers it.
      return !WaitUndisturbed(fault->delay) || RunAndAnswer(sql, fault);
    case FaultKind::kDeadlock:
      return AnswerDeadlock();
    case FaultKind::kError:
      return AnswerError(fault->number, SqlError(fault->number).description());
    default:
      return RunAndAnswer(sql, fault);
  }
}

bool Session::RunAndAnswer(const std::string& sql, const std::optional<Fault>& fault) {
  Reply reply(fault);
  const bool was_open = store_->InTransaction();
  bool failed = false;
  try {
    store_->Execute(sql, reply);
  } catch (const Failure& failure) {
    reply.Error(NumberOf(failure), failure.description());
    failed = true;
  }
  const bool is_open = store_->InTransaction();
  if (is_open && !was_open) reply.ChangeTransaction(Environment::kBegin);
  if (was_open && !is_open) reply.ChangeTransaction(failed ? Environment::kRollback : Environment::kCommit);
  reply.Finish(failed, is_open);
  if (fault && fault->kind == FaultKind::kCutDuring) return false;
  if (fault && fault->kind == FaultKind::kLate && !WaitUndisturbed(fault->delay)) return true;
  if (fault && fault->kind == FaultKind::kGarbage) {
    channel_.SendRaw(kGarbage);
    return true;
  }
  channel_.Send(reply.bytes(), !reply.IsCut());
  return !reply.IsCut() && !(fault && fault->kind == FaultKind::kCutAfter);
}

bool Session::AnswerError(int number, const std::string& text) {
  Reply reply(std::nullopt);
  reply.Error(number, text);
  reply.Finish(true, store_->InTransaction());
  channel_.Send(reply.bytes());
  return true;
}

bool Session::AnswerDeadlock() {
  Reply reply(std::nullopt);
  if (store_->InTransaction()) {
    store_->Execute("While @@TRANCOUNT > 0 Rollback Transaction");
    reply.ChangeTransaction(Environment::kRollback);
  }
  reply.Error(1205, "事务与另一个进程死锁，已被选作牺牲品，请重新运行该事务。");
  reply.Finish(true, false);
  channel_.Send(reply.bytes());
  return true;
}

bool Session::AnswerAttention() {
  Reply reply(std::nullopt);
  reply.FinishAttention();
  channel_.Send(reply.bytes());
  return true;
}

bool Session::WaitUndisturbed(std::chrono::milliseconds time) {
  return !channel_.Wait(time);
}

void Session::WaitForEver() {
  while (channel_.Read()) continue;
}

}  // namespace luming::tds
