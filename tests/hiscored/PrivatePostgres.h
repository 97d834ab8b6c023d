#pragma once
// A PostgreSQL server of the test's own: initdb and pg_ctl from the system's PostgreSQL
// in a temporary folder, listening only on a Unix socket in that folder, run as the
// unprivileged user "nobody" when the tests run as root (the server refuses root).
// Started on first use in a test program and stopped when the program ends; every step
// is bounded in time. Where it cannot start, Uri() is empty and Why() says why, for
// the test's skip message.
#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace tolva::testing {

class PrivatePostgres {
public:
    // The one server of this test program.
    static PrivatePostgres& Shared() {
        static PrivatePostgres server;
        return server;
    }

    // A fresh, empty database on the server: its libpq URI, or empty.
    std::string NewDatabase() {
        if (base_.empty()) return {};
        const std::string name = "test" + std::to_string(++databases_);
        PGconn* conn = PQconnectdb(UriOf("postgres").c_str());
        PGresult* made = PQexec(conn, ("CREATE DATABASE " + name).c_str());
        const bool ok = PQresultStatus(made) == PGRES_COMMAND_OK;
        if (!ok) why_ = std::string("CREATE DATABASE failed: ") + PQerrorMessage(conn);
        PQclear(made);
        PQfinish(conn);
        return ok ? UriOf(name) : std::string();
    }
    const std::string& Why() const { return why_; }

    ~PrivatePostgres() {
        if (base_.empty()) return;
        Run(pgctl_ + " -D " + base_ + "/data -m immediate -w -t 30 stop");
        std::error_code error;
        std::filesystem::remove_all(base_, error);
    }

private:
    PrivatePostgres() { Start(); }

    std::string UriOf(const std::string& database) const {
        return "postgresql://tolva@/" + database + "?host=" + base_ + "&port=5432&connect_timeout=10";
    }

    // Runs `command` as the server's user, bounded in time; true if it succeeded.
    bool Run(const std::string& command) const {
        const std::string as = ::geteuid() == 0 ? "runuser -u nobody -- " : "";
        return std::system(("timeout 60 " + as + command + " >> " + base_ + "/setup.log 2>&1").c_str()) == 0;
    }

    void Start() {
        std::string bin;
        std::error_code error;
        for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql", error))
            if (std::filesystem::exists(version.path() / "bin/initdb") && version.path().string() > bin)
                bin = version.path().string();
        if (bin.empty()) {
            why_ = "no PostgreSQL server is installed (no /usr/lib/postgresql/*/bin/initdb)";
            return;
        }
        std::string pattern = (std::filesystem::temp_directory_path() / "tolva2-pg-XXXXXX").string();
        if (!::mkdtemp(pattern.data())) {
            why_ = "cannot make a temporary folder";
            return;
        }
        base_ = pattern;
        if (::geteuid() == 0) {
            const passwd* nobody = ::getpwnam("nobody");
            if (!nobody || ::chown(base_.c_str(), nobody->pw_uid, nobody->pw_gid) != 0) {
                why_ = "cannot give the folder to the user nobody";
                return Abandon();
            }
        }
        pgctl_ = bin + "/bin/pg_ctl";
        if (!Run(bin + "/bin/initdb -D " + base_ + "/data -A trust -U tolva -E UTF8 --no-sync")) {
            why_ = "initdb failed: " + Log();
            return Abandon();
        }
        const std::string options = "-k " + base_ + " -c listen_addresses= -p 5432 -F";
        if (!Run(pgctl_ + " -D " + base_ + "/data -l " + base_ + "/server.log -w -t 30 -o '" + options + "' start")) {
            why_ = "the server did not start: " + Log();
            Run(pgctl_ + " -D " + base_ + "/data -m immediate -w -t 30 stop");
            return Abandon();
        }
    }

    std::string Log() const {
        std::ifstream in(base_ + "/setup.log");
        std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        return text.size() > 600 ? text.substr(text.size() - 600) : text;
    }

    void Abandon() {
        std::error_code error;
        std::filesystem::remove_all(base_, error);
        base_.clear();
    }

    std::string base_;
    std::string pgctl_;
    std::string why_;
    std::atomic<int> databases_{0};
};

} // namespace tolva::testing
