// A web server for the preview, on CivetWeb, whose threads hand out the text that there is at the
// moment. Tests: tests/tool/watch/server_test.cpp.
#include "preview/server.h"

#include <civetweb.h>
#include <netinet/in.h>
#include <pthread.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstring>
#include <future>
#include <string_view>
#include <utility>

#include "tool_error.h"

namespace ttr {
namespace {

/// Each stream keeps a thread; there must be some left for the page.
constexpr char threads[] = "32";
constexpr std::size_t mostStreams = 24;

/// How often a stream says that it is there. Also how soon one is given up that nobody reads.
constexpr std::chrono::seconds heartbeat{1};

/// Tells which text the browser shows when it asks for the stream: the text may have changed since.
/// Named after the port, as cookies are shared by all servers of the machine.
std::string versionCookie(int port) { return "ttr-version-" + std::to_string(port); }

/// Keeps signals away from the threads that are started while it lives; the program's own thread
/// waits for them.
class CSignalsBlocked {
 public:
  CSignalsBlocked() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &m_previous);
  }
  ~CSignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &m_previous, nullptr); }
  CSignalsBlocked(const CSignalsBlocked&) = delete;
  CSignalsBlocked& operator=(const CSignalsBlocked&) = delete;

 private:
  sigset_t m_previous{};
};

bool send(mg_connection* connection, std::string_view text) {
  return mg_write(connection, text.data(), text.size()) == static_cast<int>(text.size());
}

bool isHead(const mg_request_info& request) {
  return std::strcmp(request.request_method, "HEAD") == 0;
}

/// Sends `status` with `headers`, complete lines; then the body, unless only the head was asked
/// for.
int sendAnswer(mg_connection* connection, int status, const std::string& headers,
               std::string_view body) {
  const std::string head = "HTTP/1.1 " + std::to_string(status) + ' ' +
                           mg_get_response_code_text(connection, status) + "\r\n" + headers +
                           "Content-Length: " + std::to_string(body.size()) +
                           "\r\nCache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n"
                           "Connection: close\r\n\r\n";
  if (send(connection, head) && !isHead(*mg_get_request_info(connection))) send(connection, body);
  return status;
}

int refuse(mg_connection* connection, int status, const std::string& headers = "") {
  const std::string reason = mg_get_response_code_text(connection, status);
  return sendAnswer(connection, status, headers + "Content-Type: text/plain\r\n", reason + '\n');
}

/// Whether the browser wants this server, by any of its two names.
bool isMeantForUs(mg_connection* connection, int port) {
  const char* host = mg_get_header(connection, "Host");
  if (host == nullptr) return false;
  const std::string suffix = ':' + std::to_string(port);
  for (const std::string name : {"127.0.0.1", "localhost"}) {
    if (::strcasecmp(host, (name + suffix).c_str()) == 0) return true;
    if (port == 80 && ::strcasecmp(host, name.c_str()) == 0) return true;
  }
  return false;
}

/// The version of the text that the browser has, by its cookie; `current` without one.
std::uint64_t versionShown(mg_connection* connection, std::uint64_t current) {
  const char* cookies = mg_get_header(connection, "Cookie");
  const std::string name = versionCookie(mg_get_request_info(connection)->server_port);
  char value[32];
  const int length = mg_get_cookie(cookies, name.c_str(), value, sizeof value);
  std::uint64_t version = current;
  if (length > 0) std::from_chars(value, value + length, version);
  return version;
}

/// Makes a connection and drops it.
void knock(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const int client = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  static_cast<void>(::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address));
  ::close(client);
}

}  // namespace

// Versions begin with the time, so that no browser holds a text of a server before for today's.
CPreviewServer::CPreviewServer(int port, std::string html)
    : m_html(std::make_shared<const std::string>(std::move(html))),
      m_version(
          static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count())) {
  start(port);
}

CPreviewServer::~CPreviewServer() {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopping = true;
  }
  m_changed.notify_all();
  // CivetWeb looks only every two seconds whether to stop, or when a connection comes.
  const std::future<void> stopped = std::async(std::launch::async, mg_stop, m_context);
  while (stopped.wait_for(std::chrono::milliseconds(10)) != std::future_status::ready) {
    knock(m_port);
  }
  mg_exit_library();
}

void CPreviewServer::Publish(std::string html) {
  auto published = std::make_shared<const std::string>(std::move(html));
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_html = std::move(published);
    ++m_version;
  }
  m_changed.notify_all();
}

void CPreviewServer::start(int port) {
  const std::string address = "127.0.0.1:" + std::to_string(port);
  // Nothing that the server could do by itself: no files, no answers to foreign pages.
  const char* settings[] = {"listening_ports",
                            address.c_str(),
                            "num_threads",
                            threads,
                            "request_timeout_ms",
                            "10000",
                            "access_control_allow_origin",
                            "",
                            "access_control_allow_methods",
                            "",
                            nullptr};
  mg_callbacks callbacks{};
  callbacks.begin_request = answer;
  callbacks.log_message = [](const mg_connection*, const char*) { return 1; };
  char reason[256] = "";
  mg_init_data data{&callbacks, this, settings};
  unsigned code = 0;
  mg_error_data error{&code, reason, sizeof reason};
  mg_init_library(MG_FEATURES_DEFAULT);
  {
    const CSignalsBlocked blocked;
    errno = 0;
    m_context = mg_start2(&data, &error);
  }
  if (m_context == nullptr) {
    const std::string cause = errno != 0 ? std::strerror(errno) : reason;
    mg_exit_library();
    throw CToolError(address, cause);
  }
  mg_server_port listening{};
  mg_get_server_ports(m_context, 1, &listening);
  m_port = listening.port;
}

/// Every request comes here; a result other than 0 says that it was answered.
int CPreviewServer::answer(mg_connection* connection) noexcept {
  const mg_request_info& request = *mg_get_request_info(connection);
  if (!isMeantForUs(connection, request.server_port)) return refuse(connection, 403);
  const std::string_view method = request.request_method;
  if (method != "GET" && method != "HEAD") {
    return refuse(connection, 405, "Allow: GET, HEAD\r\n");
  }
  auto* const server = static_cast<CPreviewServer*>(request.user_data);
  const std::string_view path = request.local_uri_raw == nullptr ? "" : request.local_uri_raw;
  if (path == "/") return server->sendPage(connection);
  if (path == "/events") return server->streamEvents(connection);
  return refuse(connection, 404);
}

int CPreviewServer::sendPage(mg_connection* connection) {
  std::shared_ptr<const std::string> html;
  std::uint64_t version = 0;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    html = m_html;
    version = m_version;
  }
  const std::string cookie = versionCookie(mg_get_request_info(connection)->server_port) + '=' +
                             std::to_string(version) + "; Path=/; HttpOnly; SameSite=Strict";
  return sendAnswer(connection, 200,
                    "Content-Type: text/html; charset=utf-8\r\nSet-Cookie: " + cookie + "\r\n",
                    *html);
}

int CPreviewServer::streamEvents(mg_connection* connection) {
  std::unique_lock<std::mutex> lock(m_mutex);
  const bool refused = m_streams == mostStreams;
  if (!refused) ++m_streams;
  const std::uint64_t shown = versionShown(connection, m_version);
  lock.unlock();
  if (refused) return refuse(connection, 503);
  const bool begun = send(connection,
                          "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n"
                          "Cache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n"
                          "Connection: close\r\n\r\n");
  if (begun && !isHead(*mg_get_request_info(connection))) sendEvents(connection, shown);
  lock.lock();
  --m_streams;
  return 200;
}

/// Until the browser goes away or the server ends. Begins with a comment: the stream is open.
void CPreviewServer::sendEvents(mg_connection* connection, std::uint64_t shown) {
  std::string message = "retry: 1000\n:\n\n";
  while (send(connection, message)) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, heartbeat, [&] { return m_stopping || m_version != shown; });
    if (m_stopping) return;
    message =
        m_version == shown ? ":\n\n" : "event: reload\ndata: " + std::to_string(m_version) + "\n\n";
    shown = m_version;
  }
}

}  // namespace ttr
