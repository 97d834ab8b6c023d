#include "HttpServer.h"

#include "ClientAddress.h"

#include <microhttpd.h>

#include <arpa/inet.h>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <netdb.h>

namespace tolva::hiscored {

namespace {

constexpr unsigned WorkerThreads = 4;
// A connection's memory holds its request head and read buffer: a head larger than
// about all of it is answered 431 by the library (a body streams through it in parts). The game's requests have heads of
// a few hundred bytes; browsers' stay within a few kilobytes.
constexpr std::size_t ConnectionMemory = 32 * 1024;
constexpr auto SweepPeriod = std::chrono::milliseconds(100);

std::string AddressText(const sockaddr* address) {
    char text[INET6_ADDRSTRLEN] = "?";
    if (!address) return text;
    if (address->sa_family == AF_INET)
        inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in*>(address)->sin_addr, text, sizeof text);
    else if (address->sa_family == AF_INET6)
        inet_ntop(AF_INET6, &reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr, text, sizeof text);
    return text;
}

bool DeclaresTooLargeBody(const char* length) {
    if (!length) return false;
    const std::string text(length);
    if (text.empty() || text.size() > 18 || text.find_first_not_of("0123456789") != std::string::npos)
        return true;  // not a length anyone honest sends
    return std::stoull(text) > MaxBodyBytes;
}

Reply TooLarge() {
    return HiscoreSite::Refusal(413, "the submission is larger than " + std::to_string(MaxBodyBytes / 1024) + " KiB");
}

} // namespace

// What is read of one request's body.
struct HttpServer::Request {
    std::string Body;
    bool TooLarge = false;
    bool Answered = false;
};

// The library's callbacks, which call back into the server.
struct HttpServer::Callbacks {
    static MHD_Result Access(void* server, MHD_Connection* connection, const char* url, const char* method,
                             const char*, const char* upload, std::size_t* uploadSize, void** state) {
        return static_cast<HttpServer*>(server)->Handle(connection, url, method, upload, uploadSize, state) == 1
                   ? MHD_YES
                   : MHD_NO;
    }
    static void Completed(void* server, MHD_Connection* connection, void** state, MHD_RequestTerminationCode) {
        delete static_cast<Request*>(*state);
        *state = nullptr;
        static_cast<HttpServer*>(server)->watch_.Finished(connection);
    }
    static void Connection(void* server, MHD_Connection* connection, void**, MHD_ConnectionNotificationCode code) {
        auto* self = static_cast<HttpServer*>(server);
        if (code == MHD_CONNECTION_NOTIFY_CLOSED) {
            self->watch_.Closed(connection);
            return;
        }
        const MHD_ConnectionInfo* socket = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
        const MHD_ConnectionInfo* peer = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
        if (socket) self->watch_.Opened(connection, socket->connect_fd, AddressText(peer ? peer->client_addr : nullptr));
    }
    // Refuses a connection over the limits before the library takes it, so that the
    // refusal is logged with its reason; the library's own limits stay as a backstop.
    static MHD_Result Accept(void* server, const sockaddr* address, socklen_t) {
        auto* self = static_cast<HttpServer*>(server);
        const std::string from = AddressText(address);
        if (self->watch_.Open() >= static_cast<std::size_t>(self->settings_.MaxConnections)) {
            Log("refused a connection from " + from + ": " + std::to_string(self->settings_.MaxConnections) +
                " connections are open");
            return MHD_NO;
        }
        if (self->watch_.OpenFrom(from) >= static_cast<std::size_t>(self->settings_.MaxConnectionsPerAddress)) {
            Log("refused a connection from " + from + ": " + std::to_string(self->settings_.MaxConnectionsPerAddress) +
                " connections are open from it");
            return MHD_NO;
        }
        return MHD_YES;
    }
    static void Logger(void*, const char* format, va_list arguments) {
        char text[512];
        std::vsnprintf(text, sizeof text, format, arguments);
        std::string line(text);
        // A client that went away is no refusal; the watch logs the ones it closed.
        if (line.rfind("Connection socket is closed", 0) == 0) return;
        while (!line.empty() && (line.back() == '\n' || line.back() == ' ')) line.pop_back();
        Log(line);
    }
};

HttpServer::HttpServer(HiscoreSite& site, HttpSettings settings)
    : site_(site), settings_(std::move(settings)),
      watch_(std::chrono::seconds(settings_.RequestTimeoutSeconds), [](const std::string& line) { Log(line); }) {}

HttpServer::~HttpServer() { Stop(); }

void HttpServer::Log(const std::string& line) {
    const std::string whole = "tolva2-hiscored: " + line + "\n";
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}

bool HttpServer::Start(std::string& error) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
    addrinfo* found = nullptr;
    if (getaddrinfo(settings_.Host.c_str(), std::to_string(settings_.Port).c_str(), &hints, &found) != 0 || !found) {
        error = "cannot listen on " + settings_.Host + ": no such address";
        return false;
    }
    unsigned flags = MHD_USE_INTERNAL_POLLING_THREAD | MHD_USE_EPOLL | MHD_USE_ERROR_LOG;
    if (found->ai_family == AF_INET6) flags |= MHD_USE_IPv6;
    daemon_ = MHD_start_daemon(
        flags, static_cast<std::uint16_t>(settings_.Port), &Callbacks::Accept, this, &Callbacks::Access, this,
        MHD_OPTION_EXTERNAL_LOGGER, &Callbacks::Logger, this,
        MHD_OPTION_SOCK_ADDR, found->ai_addr,
        MHD_OPTION_THREAD_POOL_SIZE, WorkerThreads,
        // The library checks its limits before the accept callback, silently; they are
        // set above the callback's, so that the callback refuses (and logs) first, and
        // the library's only catch what races between its threads let through. Its
        // limit in all is shared out among the threads, hence the double.
        MHD_OPTION_CONNECTION_LIMIT, static_cast<unsigned>(2 * settings_.MaxConnections + WorkerThreads),
        MHD_OPTION_PER_IP_CONNECTION_LIMIT, static_cast<unsigned>(settings_.MaxConnectionsPerAddress + WorkerThreads),
        MHD_OPTION_CONNECTION_TIMEOUT, static_cast<unsigned>(settings_.RequestTimeoutSeconds),
        MHD_OPTION_CONNECTION_MEMORY_LIMIT, ConnectionMemory,
        MHD_OPTION_LISTEN_BACKLOG_SIZE, 1024u,
        MHD_OPTION_NOTIFY_COMPLETED, &Callbacks::Completed, this,
        MHD_OPTION_NOTIFY_CONNECTION, &Callbacks::Connection, this,
        MHD_OPTION_END);
    freeaddrinfo(found);
    if (!daemon_) {
        error = "cannot listen on " + settings_.Host + ":" + std::to_string(settings_.Port);
        return false;
    }
    watch_.StartSweeping(SweepPeriod);
    return true;
}

int HttpServer::Port() const {
    const MHD_DaemonInfo* info = daemon_ ? MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_BIND_PORT) : nullptr;
    return info ? info->port : -1;
}

void HttpServer::Stop() {
    if (daemon_) MHD_stop_daemon(daemon_);
    daemon_ = nullptr;
    watch_.StopSweeping();
}

std::string HttpServer::Sender(MHD_Connection* connection) const {
    const MHD_ConnectionInfo* peer = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
    const std::string address = AddressText(peer ? peer->client_addr : nullptr);
    return SenderAddress(address, MHD_lookup_connection_value(connection, MHD_HEADER_KIND, "X-Forwarded-For"),
                         settings_.TrustedProxy);
}

int HttpServer::Handle(MHD_Connection* connection, const char* url, const char* method, const char* upload,
                       std::size_t* uploadSize, void** state) {
    auto* request = static_cast<Request*>(*state);
    if (!request) {
        // The head is in; the body, if any, follows in later calls.
        request = new Request;
        *state = request;
        const std::string sender = Sender(connection);
        if (std::string_view(url) != HiscorePath)
            return Answer(connection, request, HiscoreSite::Refusal(404, "there is nothing at this address"), sender);
        const std::string_view verb(method);
        if (verb == "GET" || verb == "HEAD") return Answer(connection, request, site_.Table(), sender);
        if (verb != "POST")
            return Answer(connection, request, HiscoreSite::Refusal(405, "the hiscore address answers only GET and POST"),
                          sender);
        if (DeclaresTooLargeBody(MHD_lookup_connection_value(connection, MHD_HEADER_KIND, "Content-Length")))
            return Answer(connection, request, TooLarge(), sender);
        return 1;
    }
    if (*uploadSize > 0) {
        if (!request->Answered && !request->TooLarge) {
            if (request->Body.size() + *uploadSize > MaxBodyBytes) {
                request->TooLarge = true;
                request->Body.clear();
            } else {
                request->Body.append(upload, *uploadSize);
            }
        }
        *uploadSize = 0;
        return 1;
    }
    if (request->Answered) return 1;
    const std::string sender = Sender(connection);
    if (request->TooLarge) return Answer(connection, request, TooLarge(), sender);
    const char* type = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, "Content-Type");
    return Answer(connection, request, site_.Submit(type ? type : "", request->Body, sender), sender);
}

int HttpServer::Answer(MHD_Connection* connection, Request* request, const Reply& reply, const std::string& sender) {
    request->Answered = true;
    watch_.Answered(connection);
    if (reply.Status >= 400) Log("refused " + sender + " with " + std::to_string(reply.Status) + ": " + reply.Reason);
    MHD_Response* response =
        MHD_create_response_from_buffer(reply.Html.size(), const_cast<char*>(reply.Html.data()), MHD_RESPMEM_MUST_COPY);
    if (!response) return 0;
    MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, "text/html; charset=utf-8");
    if (reply.Status == 405) MHD_add_response_header(response, MHD_HTTP_HEADER_ALLOW, "GET, POST");
    // A refused client gets no second request on the same connection.
    if (reply.Status >= 400) MHD_add_response_header(response, MHD_HTTP_HEADER_CONNECTION, "close");
    const MHD_Result queued = MHD_queue_response(connection, static_cast<unsigned>(reply.Status), response);
    MHD_destroy_response(response);
    return queued == MHD_YES ? 1 : 0;
}

} // namespace tolva::hiscored
