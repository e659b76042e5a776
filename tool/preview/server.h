#ifndef TOOL_PREVIEW_SERVER_H
#define TOOL_PREVIEW_SERVER_H

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

struct mg_connection;
struct mg_context;

namespace ttr {

/// Shows one HTML text to browsers on this machine: GET / is the text, GET /events a stream with an
/// event "reload" for each text that takes its place. There is nothing else, no file above all.
///
/// It listens on 127.0.0.1 only, and answers only requests that were meant for it: a foreign web
/// page whose name leads to 127.0.0.1 shows in the Host header.
class CPreviewServer {
 public:
  /// Serves `html` on this port; 0 is any that is free.
  /// \throws CToolError when the port cannot be had
  CPreviewServer(int port, std::string html);
  /// Ends the streams and waits until the last answer is given.
  ~CPreviewServer();
  CPreviewServer(const CPreviewServer&) = delete;
  CPreviewServer& operator=(const CPreviewServer&) = delete;

  std::string Url() const { return "http://127.0.0.1:" + std::to_string(m_port) + '/'; }
  int port() const { return m_port; }

  /// Serves `html` from now on, and tells all streams of it.
  void Publish(std::string html);

 private:
  static int answer(mg_connection* connection) noexcept;
  void start(int port);
  int sendPage(mg_connection* connection);
  int streamEvents(mg_connection* connection);
  void sendEvents(mg_connection* connection, std::uint64_t shown);

  std::mutex m_mutex;  ///< for all that follows up to m_streams
  std::condition_variable m_changed;
  std::shared_ptr<const std::string> m_html;
  std::uint64_t m_version;  ///< of the text
  bool m_stopping = false;
  std::size_t m_streams = 0;

  int m_port = 0;
  mg_context* m_context = nullptr;
};

}  // namespace ttr

#endif  // TOOL_PREVIEW_SERVER_H
