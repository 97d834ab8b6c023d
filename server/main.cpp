// tolva2-hiscored: the hiscore server the game's Internet hiscores talk to. It needs
// nothing of the game's toolkit, so it runs on a headless machine. This file reads the
// command line, opens the store and the sockets, and waits for SIGINT or SIGTERM.
#include "HiscoreSite.h"
#include "HttpServer.h"
#include "OpenStore.h"
#include "ServerOptions.h"

#include <csignal>
#include <iostream>
#include <pthread.h>
#include <sys/resource.h>

namespace {

using namespace tolva::hiscored;

// Every connection is a file descriptor: the soft limit goes up to the hard one, and
// the connection limit down to what fits under it, with a word in the log.
int FitConnections(int wanted) {
    constexpr rlim_t Reserve = 64;  // the database, the listening sockets, the log
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return wanted;
    if (limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
        getrlimit(RLIMIT_NOFILE, &limit);
    }
    if (limit.rlim_cur == RLIM_INFINITY || limit.rlim_cur >= static_cast<rlim_t>(wanted) + Reserve) return wanted;
    const int fits = limit.rlim_cur > 2 * Reserve ? static_cast<int>(limit.rlim_cur - Reserve) : 1;
    HttpServer::Log("only " + std::to_string(fits) + " connections fit under the limit of open files");
    return fits;
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

    // SIGINT and SIGTERM are waited for by the main thread, which then stops the
    // server: every request in hand is finished and the database closed.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    const std::unique_ptr<HiscoreStore> store = OpenStore(options->Database, error);
    if (!store) {
        std::cerr << "tolva2-hiscored: " << error << '\n';
        return 1;
    }
    HiscoreSite site(*store, options->MaxSubmissionsPerMinute);
    HttpSettings settings;
    settings.Host = options->Host;
    settings.Port = options->Port;
    settings.RequestTimeoutSeconds = options->RequestTimeoutSeconds;
    settings.MaxConnections = FitConnections(options->MaxConnections);
    settings.MaxConnectionsPerAddress = options->MaxConnectionsPerAddress;
    settings.TrustedProxy = options->TrustedProxy;
    HttpServer server(site, settings);
    if (!server.Start(error)) {
        std::cerr << "tolva2-hiscored: " << error << '\n';
        return 1;
    }
    const bool v6 = options->Host.find(':') != std::string::npos;
    // A PostgreSQL URI may hold a password: the log names only the kind of store.
    const std::string database =
        options->Database.find("://") != std::string::npos ? "PostgreSQL" : options->Database;
    std::cout << "tolva2-hiscored: listening on " << (v6 ? "[" : "") << options->Host << (v6 ? "]" : "") << ":"
              << server.Port() << HiscorePath << ", database " << database << std::endl;

    int signal = 0;
    sigwait(&stopSignals, &signal);
    server.Stop();
    return 0;
}
