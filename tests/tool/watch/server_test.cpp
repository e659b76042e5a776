#include "preview/server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tool_error.h"

namespace ttr {
namespace {

/// A browser, as far as the server can tell: one connection to a port of this machine.
class CClient {
 public:
  explicit CClient(int port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const timeval patience{60, 0};
    ::setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    m_connected =
        ::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }
  ~CClient() { ::close(m_socket); }
  CClient(const CClient&) = delete;
  CClient& operator=(const CClient&) = delete;

  bool connected() const { return m_connected; }
  void Send(const std::string& text) const {
    EXPECT_EQ(::send(m_socket, text.data(), text.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(text.size()));
  }
  /// All that comes until the server closes the connection.
  std::string ReadAll() {
    while (receive()) {
    }
    return std::move(m_received);
  }
  /// All that comes up to and with `end`; empty when it does not come.
  std::string ReadTo(const std::string& end) {
    while (m_received.find(end) == std::string::npos) {
      if (!receive()) return "";
    }
    const std::size_t length = m_received.find(end) + end.size();
    const std::string text = m_received.substr(0, length);
    m_received.erase(0, length);
    return text;
  }

 private:
  bool receive() {
    char buffer[65536];
    const ssize_t count = ::recv(m_socket, buffer, sizeof buffer, 0);
    if (count > 0) m_received.append(buffer, static_cast<std::size_t>(count));
    return count > 0;
  }

  int m_socket;
  bool m_connected = false;
  std::string m_received;
};

std::string Host(int port) { return "Host: 127.0.0.1:" + std::to_string(port) + "\r\n"; }

/// The answer to a request, whose first line lacks only the version.
std::string Answer(const CPreviewServer& server, const std::string& request,
                   const std::optional<std::string>& headers = {}) {
  CClient client(server.port());
  client.Send(request + " HTTP/1.1\r\n" + headers.value_or(Host(server.port())) + "\r\n");
  return client.ReadAll();
}

std::string StatusOf(const std::string& answer) { return answer.substr(0, answer.find("\r\n")); }
std::string BodyOf(const std::string& answer) {
  const std::size_t end = answer.find("\r\n\r\n");
  return end == std::string::npos ? "no body" : answer.substr(end + 4);
}
std::string HeaderOf(const std::string& answer, const std::string& name) {
  const std::size_t begin = answer.find("\r\n" + name + ": ");
  if (begin == std::string::npos) return "";
  const std::size_t value = begin + name.size() + 4;
  return answer.substr(value, answer.find("\r\n", value) - value);
}

/// A stream of events that has begun.
class CStream : public CClient {
 public:
  explicit CStream(const CPreviewServer& server, const std::string& headers = "")
      : CClient(server.port()) {
    Send("GET /events HTTP/1.1\r\n" + Host(server.port()) + headers + "\r\n");
    m_head = ReadTo("\r\n\r\n");
    EXPECT_EQ(ReadTo("\n\n"), "retry: 1000\n:\n\n");
  }
  const std::string& head() const { return m_head; }
  /// The next one that is no comment.
  std::string Next() {
    std::string event;
    do {
      event = ReadTo("\n\n");
    } while (event == ":\n\n");
    return event;
  }

 private:
  std::string m_head;
};

bool IsReload(const std::string& event) {
  const std::string begin = "event: reload\ndata: ";
  return event.compare(0, begin.size(), begin) == 0 && event.size() > begin.size() + 2;
}

TEST(Server, GivesThePage) {
  const CPreviewServer server(0, "<html>\xc3\xa4</html>");
  EXPECT_EQ(server.Url(), "http://127.0.0.1:" + std::to_string(server.port()) + "/");
  const std::string page = Answer(server, "GET /");
  EXPECT_EQ(StatusOf(page), "HTTP/1.1 200 OK");
  EXPECT_EQ(HeaderOf(page, "Content-Type"), "text/html; charset=utf-8");
  EXPECT_EQ(HeaderOf(page, "Content-Length"), "15");
  EXPECT_EQ(HeaderOf(page, "Cache-Control"), "no-store");
  EXPECT_EQ(HeaderOf(page, "Access-Control-Allow-Origin"), "");
  EXPECT_EQ(BodyOf(page), "<html>\xc3\xa4</html>");
}

TEST(Server, GivesTheNewestPage) {
  CPreviewServer server(0, "one");
  server.Publish("two");
  EXPECT_EQ(BodyOf(Answer(server, "GET /")), "two");
  server.Publish("three");
  EXPECT_EQ(BodyOf(Answer(server, "GET /?x=y")), "three");
}

TEST(Server, HeadIsWithoutBody) {
  const CPreviewServer server(0, "page");
  const std::string page = Answer(server, "HEAD /");
  EXPECT_EQ(StatusOf(page), "HTTP/1.1 200 OK");
  EXPECT_EQ(HeaderOf(page, "Content-Length"), "4");
  EXPECT_EQ(BodyOf(page), "");
  const std::string events = Answer(server, "HEAD /events");
  EXPECT_EQ(HeaderOf(events, "Content-Type"), "text/event-stream");
  EXPECT_EQ(BodyOf(events), "");
  const std::string nothing = Answer(server, "HEAD /nothing");
  EXPECT_EQ(StatusOf(nothing), "HTTP/1.1 404 Not Found");
  EXPECT_EQ(BodyOf(nothing), "");
}

TEST(Server, HasNothingElse) {
  const CPreviewServer server(0, "page");
  for (const std::string path : {"/x",
                                 "/index.html",
                                 "/events/",
                                 "/events/x",
                                 "/EVENTS",
                                 "/.",
                                 "/..",
                                 "/../etc/passwd",
                                 "/%2e%2e/etc/passwd",
                                 "/..%2f..%2fetc/passwd",
                                 "/etc/passwd",
                                 "/etc/",
                                 "//etc/passwd",
                                 "/page.json",
                                 "/CMakeCache.txt",
                                 "/tool/",
                                 "/x.cgi",
                                 "/x.lua",
                                 "/x.ssi",
                                 "/x.shtml"}) {
    SCOPED_TRACE(path);
    const std::string refusal = Answer(server, "GET " + path);
    EXPECT_EQ(StatusOf(refusal), "HTTP/1.1 404 Not Found");
    EXPECT_EQ(BodyOf(refusal), "Not Found\n");
  }
}

TEST(Server, OnlyReads) {
  const CPreviewServer server(0, "page");
  for (const std::string method :
       {"POST", "PUT", "DELETE", "OPTIONS", "PATCH", "PROPFIND", "MKCOL"}) {
    for (const std::string path : {" /", " /events", " /x"}) {
      SCOPED_TRACE(method + path);
      const std::string refusal = Answer(server, method + path);
      EXPECT_EQ(StatusOf(refusal), "HTTP/1.1 405 Method Not Allowed");
      EXPECT_EQ(HeaderOf(refusal, "Allow"), "GET, HEAD");
    }
  }
}

TEST(Server, DoesNotLetForeignPagesAskFirst) {
  const CPreviewServer server(0, "page");
  const std::string refusal = Answer(server, "OPTIONS /",
                                     Host(server.port()) +
                                         "Origin: http://foreign.example\r\n"
                                         "Access-Control-Request-Method: GET\r\n"
                                         "Access-Control-Request-Headers: x-y\r\n");
  EXPECT_EQ(StatusOf(refusal), "HTTP/1.1 405 Method Not Allowed");
  EXPECT_EQ(refusal.find("Access-Control"), std::string::npos);
}

TEST(Server, AnswersOnlyToItsOwnNames) {
  const CPreviewServer server(0, "page");
  const std::string port = std::to_string(server.port());
  for (const std::string name : {"127.0.0.1:", "localhost:", "LocalHost:"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(BodyOf(Answer(server, "GET /", "Host: " + name + port + "\r\n")), "page");
  }
  const std::vector<std::string> foreign = {
      "",
      "Host: \r\n",
      "Host: foreign.example\r\n",
      "Host: foreign.example:" + port + "\r\n",
      "Host: localhost\r\n",
      "Host: 127.0.0.1\r\n",
      "Host: 127.0.0.1:1\r\n",
      "Host: 127.0.0.1:" + port + "0\r\n",
      "Host: 127.0.0.1.foreign.example:" + port + "\r\n",
      "Host: localhost:" + port + ".foreign.example\r\n",
      "Host: localhost.:" + port + "\r\n",
      "Host: [::1]:" + port + "\r\n",
      "X: 127.0.0.1:" + port + "\r\n",
      "Host: foreign.example\r\nHost: 127.0.0.1:" + port + "\r\n",
  };
  for (const std::string& headers : foreign) {
    for (const std::string request : {"GET /", "GET /events", "GET /x", "POST /"}) {
      SCOPED_TRACE(request + ' ' + headers);
      const std::string refusal = Answer(server, request, headers);
      EXPECT_EQ(StatusOf(refusal), "HTTP/1.1 403 Forbidden");
      EXPECT_EQ(BodyOf(refusal), "Forbidden\n");
    }
  }
}

TEST(Server, BadRequestsAreRefused) {
  const CPreviewServer server(0, "page");
  for (const std::string request :
       {"nonsense", "GET", "GET http://foreign.example/", "GET *", "get /", "GET / x"}) {
    SCOPED_TRACE(request);
    const std::string refusal = Answer(server, request);
    EXPECT_EQ(refusal.find("page"), std::string::npos);
    EXPECT_EQ(refusal.find("200"), std::string::npos);
  }
  EXPECT_EQ(BodyOf(Answer(server, "GET /")), "page") << "still there";
}

TEST(Server, BigPage) {
  std::string text;
  while (text.size() < 20'000'000) text += "line " + std::to_string(text.size()) + '\n';
  const CPreviewServer server(0, text);
  const std::string page = Answer(server, "GET /");
  EXPECT_EQ(HeaderOf(page, "Content-Length"), std::to_string(text.size()));
  EXPECT_TRUE(BodyOf(page) == text);
}

TEST(Server, EmptyPage) {
  const CPreviewServer server(0, "");
  EXPECT_EQ(HeaderOf(Answer(server, "GET /"), "Content-Length"), "0");
}

TEST(Server, TellsEachStreamOfEachNewPage) {
  CPreviewServer server(0, "0");
  CStream one(server);
  CStream two(server);
  EXPECT_EQ(StatusOf(one.head()), "HTTP/1.1 200 OK");
  EXPECT_EQ(HeaderOf(one.head(), "Content-Type"), "text/event-stream");
  std::string before;
  for (int i = 1; i <= 10; ++i) {
    SCOPED_TRACE(i);
    server.Publish(std::to_string(i));
    const std::string event = one.Next();
    EXPECT_TRUE(IsReload(event)) << event;
    EXPECT_NE(event, before);
    EXPECT_EQ(two.Next(), event);
    EXPECT_EQ(BodyOf(Answer(server, "GET /")), std::to_string(i));
    before = event;
  }
}

TEST(Server, StreamsHaveAHeartbeat) {
  const CPreviewServer server(0, "page");
  CStream stream(server);
  EXPECT_EQ(stream.ReadTo("\n\n"), ":\n\n");
  EXPECT_EQ(stream.ReadTo("\n\n"), ":\n\n");
}

TEST(Server, StreamTellsAtOnceWhenThePageIsOlder) {
  CPreviewServer server(0, "old");
  const std::string page = Answer(server, "GET /");
  const std::string cookie = HeaderOf(page, "Set-Cookie");
  ASSERT_NE(cookie.find("; Path=/; HttpOnly; SameSite=Strict"), std::string::npos) << cookie;
  const std::string header = "Cookie: a=b; " + cookie.substr(0, cookie.find(';')) + "\r\n";
  CStream current(server, header);
  EXPECT_EQ(current.ReadTo("\n\n"), ":\n\n") << "nothing new, the heartbeat comes first";
  server.Publish("new");
  EXPECT_TRUE(IsReload(current.Next()));
  CStream older(server, header);
  EXPECT_TRUE(IsReload(older.ReadTo("\n\n")));
}

TEST(Server, CookiesOfOtherServersDoNotCount) {
  const CPreviewServer server(0, "page");
  const std::string ours = "ttr-version-" + std::to_string(server.port());
  const std::vector<std::string> cookies = {"ttr-version-1=5", ours + "=nonsense", ours + "=",
                                            "ttr-version=5", std::string(5000, 'x')};
  std::vector<std::unique_ptr<CStream>> streams;
  for (const std::string& cookie : cookies) {
    streams.push_back(std::make_unique<CStream>(server, "Cookie: " + cookie + "\r\n"));
  }
  for (const auto& stream : streams) {
    EXPECT_EQ(stream->ReadTo("\n\n"), ":\n\n") << "nothing new, the heartbeat comes first";
  }
}

TEST(Server, PageIsThereHoweverManyStreams) {
  const CPreviewServer server(0, "page");
  std::vector<std::unique_ptr<CClient>> streams;
  int refused = 0;
  for (int i = 0; i < 40; ++i) {
    streams.push_back(std::make_unique<CClient>(server.port()));
    streams.back()->Send("GET /events HTTP/1.1\r\n" + Host(server.port()) + "\r\n");
    const std::string status = StatusOf(streams.back()->ReadTo("\r\n"));
    if (status == "HTTP/1.1 503 Service Unavailable") ++refused;
  }
  EXPECT_EQ(refused, 16);
  EXPECT_EQ(BodyOf(Answer(server, "GET /")), "page");
}

TEST(Server, StreamsThatNobodyReadsAreGivenUp) {
  const CPreviewServer server(0, "page");
  for (int i = 0; i < 24; ++i) const CStream abandoned(server);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  std::string status;
  do {
    CClient client(server.port());
    client.Send("GET /events HTTP/1.1\r\n" + Host(server.port()) + "\r\n");
    status = StatusOf(client.ReadTo("\r\n"));
  } while (status != "HTTP/1.1 200 OK" && std::chrono::steady_clock::now() < end);
  EXPECT_EQ(status, "HTTP/1.1 200 OK");
}

TEST(Server, EndsWhileBrowsersAreConnected) {
  std::optional<CPreviewServer> server(std::in_place, 0, std::string(50'000'000, 'x'));
  const int port = server->port();
  CStream stream(*server);
  const CClient silent(port);
  const CClient slow(port);
  slow.Send("GET / HTTP/1.1\r\n" + Host(port) + "\r\n");  // and does not read the answer
  const auto begin = std::chrono::steady_clock::now();
  server.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
  EXPECT_EQ(stream.Next(), "");
  EXPECT_FALSE(CClient(port).connected());
}

TEST(Server, PortThatIsTaken) {
  const CPreviewServer first(0, "first");
  try {
    const CPreviewServer second(first.port(), "second");
    FAIL() << "no exception";
  } catch (const CToolError& error) {
    const std::string message = error.what();
    EXPECT_EQ(message, "127.0.0.1:" + std::to_string(first.port()) + ": Address already in use");
  }
  EXPECT_EQ(BodyOf(Answer(first, "GET /")), "first");
}

TEST(Server, PortIsFreeAgainAfterwards) {
  std::optional<CPreviewServer> server(std::in_place, 0, "first");
  const int port = server->port();
  EXPECT_EQ(BodyOf(Answer(*server, "GET /")), "first");
  server.reset();
  server.emplace(port, "second");
  EXPECT_EQ(server->port(), port);
  EXPECT_EQ(BodyOf(Answer(*server, "GET /")), "second");
}

TEST(Server, ListensOnThisMachineOnly) {
  const CPreviewServer server(0, "page");
  const int other = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(server.port()));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK + 1);  // 127.0.0.2, of this machine too
  EXPECT_NE(::connect(other, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ::close(other);
}

TEST(Server, LeavesChildProcessesAlone) {
  struct sigaction before {};
  ::sigaction(SIGCHLD, nullptr, &before);
  const CPreviewServer server(0, "page");
  struct sigaction after {};
  ::sigaction(SIGCHLD, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
  sigset_t blocked;
  ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  EXPECT_EQ(::sigismember(&blocked, SIGINT), 0);
}

}  // namespace
}  // namespace ttr
