#pragma once

#include <cstdint>
#include <string>

#include "runtime/internal/http_address.h"
#include "runtime/win32/inet_exchange.h"

namespace swiftpatch {

// The calls of the system's http library, with what this program asks of each.

/// A session whose calls do not wait.
HINTERNET OpenSession();

/// Who the system may say that the user is. To the update server it never does.
enum class Logon { kNone, kProxy };

/// The server of `address`.
HINTERNET OpenConnection(HINTERNET session, const HttpAddress& address, Logon logon);

/// A request that passes every cache, carries no cookies, follows no redirect and keeps the
/// connection open; `connection` was opened with the same `logon`. Null when the system refuses it;
/// `exchange` then still has both its owners.
HINTERNET OpenRequest(HINTERNET connection, const std::string& verb, const HttpAddress& address,
                      Logon logon, Exchange& exchange);

/// True for an answer that asks for a logon to the proxy (status 407) and that a proxy gave. A
/// server can send that status too, to be told who the user is.
bool IsProxyAskingForLogon(HINTERNET request);

/// The answer's status code, 0 where there was none; and all its headers.
std::int32_t StatusCode(HINTERNET request);
std::string RawHeaders(HINTERNET request);

/// Closes a request whose body has not been read to its end. The system's call can take as long as
/// the rest of the body (Wine reads that first, to keep the connection), so it is left to a thread
/// that touches nothing else.
void CloseUnread(HINTERNET request);

}  // namespace swiftpatch
