// tolva2-hiscored: the hiscore server the game's Internet hiscores talk to. The HTTP
// side is cpp-httplib, a small, widely packaged library without Qt, so the server runs
// on a headless machine with nothing of the game's toolkit installed. What a request
// means is HiscoreSite's; this file only wires it to the sockets, with the limits that
// keep a hostile client from holding the server: bounded bodies, read and write
// timeouts, a fixed pool of worker threads.
#include "HiscoreSite.h"
#include "ServerOptions.h"
#include "SqliteHiscoreStore.h"

#include <httplib.h>

#include <chrono>
#include <csignal>
#include <iostream>
#include <pthread.h>
#include <thread>

namespace {

using namespace tolva::hiscored;

constexpr int WorkerThreads = 16;
// A whole body must arrive within this time, however slowly its bytes trickle in.
constexpr auto BodyDeadline = std::chrono::seconds(10);

void Send(httplib::Response& response, const Reply& reply) {
    response.status = reply.Status;
    response.set_content(reply.Html, "text/html; charset=utf-8");
}

Reply TooLarge() {
    return HiscoreSite::Refusal(413, "the submission is larger than " + std::to_string(MaxBodyBytes / 1024) + " KiB");
}

bool DeclaresTooLargeBody(const httplib::Request& request) {
    if (!request.has_header("Content-Length")) return false;
    const std::string length = request.get_header_value("Content-Length");
    if (length.empty() || length.size() > 18 || length.find_first_not_of("0123456789") != std::string::npos)
        return true;  // not a length anyone honest sends
    return std::stoull(length) > MaxBodyBytes;
}

void Serve(httplib::Server& server, HiscoreSite& site) {
    server.new_task_queue = [] { return new httplib::ThreadPool(WorkerThreads); };
    server.set_payload_max_length(MaxBodyBytes);
    server.set_read_timeout(5);
    server.set_write_timeout(5);
    // One request per connection. The library reads whatever follows a refused body as
    // the next request; closing after every answer leaves a flood of bytes unread instead
    // of parsed. A browser sends one form per submission, so nothing is lost by it.
    server.set_keep_alive_max_count(1);

    // A body declared too large is refused from its headers, before a byte of it is read.
    server.set_pre_routing_handler([](const httplib::Request& request, httplib::Response& response) {
        if (request.method == "POST" && DeclaresTooLargeBody(request)) {
            Send(response, TooLarge());
            return httplib::Server::HandlerResponse::Handled;
        }
        return httplib::Server::HandlerResponse::Unhandled;
    });

    const std::string path(HiscorePath);
    server.Get(path, [&site](const httplib::Request&, httplib::Response& response) { Send(response, site.Table()); });
    server.Post(path, [&site](const httplib::Request& request, httplib::Response& response,
                              const httplib::ContentReader& reader) {
        std::string body;
        bool tooLarge = false;
        const auto deadline = std::chrono::steady_clock::now() + BodyDeadline;
        const bool read = reader([&](const char* data, std::size_t length) {
            if (body.size() + length > MaxBodyBytes) {
                tooLarge = true;
                return false;
            }
            body.append(data, length);
            return std::chrono::steady_clock::now() < deadline;
        });
        if (tooLarge)
            Send(response, TooLarge());
        else if (!read)
            Send(response, HiscoreSite::Refusal(400, "the submission did not arrive whole"));
        else
            Send(response, site.Submit(request.get_header_value("Content-Type"), body, request.remote_addr));
    });
    const auto notAllowed = [](const httplib::Request&, httplib::Response& response) {
        Send(response, HiscoreSite::Refusal(405, "the hiscore address answers only GET and POST"));
        response.set_header("Allow", "GET, POST");
    };
    server.Put(path, notAllowed);
    server.Patch(path, notAllowed);
    server.Delete(path, notAllowed);
    server.Options(path, notAllowed);
    // Paths and methods nobody serves, and requests the library refused itself.
    server.set_error_handler([](const httplib::Request&, httplib::Response& response) {
        if (!response.body.empty()) return;
        Send(response, HiscoreSite::Refusal(response.status, response.status == 404
                                                                 ? "there is nothing at this address"
                                                                 : "the request could not be read"));
    });
    server.set_exception_handler([](const httplib::Request&, httplib::Response& response, std::exception_ptr) {
        Send(response, HiscoreSite::Refusal(500, "the server failed on this request"));
    });
}

} // namespace

int main(int argc, char** argv) {
    std::string error;
    const std::optional<ServerOptions> options =
        ParseServerOptions(std::vector<std::string>(argv + 1, argv + argc), error);
    if (!options) {
        std::cerr << "tolva2-hiscored: " << error << '\n';
        return 2;
    }
    if (options->Help) {
        std::cout << ServerUsage();
        return 0;
    }

    // SIGINT and SIGTERM are taken by one thread that stops the server, so that every
    // worker finishes its request and the database is closed; no thread is interrupted.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    const std::unique_ptr<SqliteHiscoreStore> store = SqliteHiscoreStore::Open(options->Database, error);
    if (!store) {
        std::cerr << "tolva2-hiscored: " << error << '\n';
        return 1;
    }
    HiscoreSite site(*store);
    httplib::Server server;
    Serve(server, site);

    int port = options->Port;
    if (port == 0) port = server.bind_to_any_port(options->Host);
    else if (!server.bind_to_port(options->Host, port)) port = -1;
    if (port <= 0) {
        std::cerr << "tolva2-hiscored: cannot listen on " << options->Host << ":" << options->Port << '\n';
        return 1;
    }
    const bool v6 = options->Host.find(':') != std::string::npos;
    std::cout << "tolva2-hiscored: listening on " << (v6 ? "[" : "") << options->Host << (v6 ? "]" : "") << ":"
              << port << HiscorePath << ", database " << options->Database << std::endl;

    std::thread stopper([&server, stopSignals] {
        int signal = 0;
        sigwait(&stopSignals, &signal);
        server.stop();
    });
    const bool served = server.listen_after_bind();
    if (stopper.joinable()) {
        // A listener that ended without a signal (a socket error) still lets the
        // stopper go.
        pthread_kill(stopper.native_handle(), SIGTERM);
        stopper.join();
    }
    return served ? 0 : 1;
}
