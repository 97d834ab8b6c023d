#pragma once
// The sockets of tolva2-hiscored: libmicrohttpd, event-driven (a few threads, each with
// its own epoll set), so that a thousand slow or idle clients cost a thousand sockets
// and not a thousand threads, and a normal request is answered at once beside them.
// The library itself keeps the limits on connections in all and per address, closes
// silent connections, and answers 431 to a request head larger than a connection's
// memory; ConnectionWatch adds the deadline on the whole request. What a request
// means is HiscoreSite's.
#include "ConnectionWatch.h"
#include "HiscoreSite.h"

#include <memory>
#include <string>

struct MHD_Daemon;
struct MHD_Connection;

namespace tolva::hiscored {

struct HttpSettings {
    std::string Host = "127.0.0.1";
    int Port = 0;
    int RequestTimeoutSeconds = 5;
    int MaxConnections = 4000;
    int MaxConnectionsPerAddress = 32;
    std::string TrustedProxy;  // a normal address, or empty
};

class HttpServer {
public:
    HttpServer(HiscoreSite& site, HttpSettings settings);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    // Listens and serves on threads of its own. False with `error` if it cannot.
    bool Start(std::string& error);
    // The port it listens on (the one chosen when asked for port 0).
    int Port() const;
    // Stops taking connections and ends the ones open; returns when all threads are done.
    void Stop();

    // One line on the standard error, whole.
    static void Log(const std::string& line);

private:
    struct Request;
    struct Callbacks;
    friend struct Callbacks;

    int Handle(MHD_Connection* connection, const char* url, const char* method, const char* upload,
               std::size_t* uploadSize, void** state);
    int Answer(MHD_Connection* connection, Request* request, const Reply& reply, const std::string& sender);
    std::string Sender(MHD_Connection* connection) const;

    HiscoreSite& site_;
    HttpSettings settings_;
    ConnectionWatch watch_;
    MHD_Daemon* daemon_ = nullptr;
};

} // namespace tolva::hiscored
