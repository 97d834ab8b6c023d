// The printout on a real printer: a private CUPS server (its own configuration, spool and
// state under a temporary folder, reached through a Unix socket) with a PDF printer as
// the default, printed to through the game's own PrintStatToPrinter, and the PDF that
// comes out read back with pdftotext.
//
// The PDF back end reads its settings only from /etc/cups; the test puts a private
// settings file there (cups-pdf-<name>.conf, chosen by the printer's address) that sends
// the output into the temporary folder, and removes it afterwards. Where the server
// cannot start (no CUPS installed, /etc/cups not writable) the test is skipped with the
// reason. Printing is asynchronous, so the test waits for the file, bounded in time: this
// is a real server, not a timer of the game.
#include "CommandOutput.h"
#include "stats/StatTable.h"
#include "stats/qt/StatPrintout.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using tolva::StatTable;
using tolva::testing::TempFolder;
namespace fs = std::filesystem;

namespace {

const char* const PdfPpd = "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd";
const char* const PdfBackend = "/usr/lib/cups/backend/cups-pdf";

std::string Output(const std::string& command) { return tolva::testing::CommandOutput(command + " 2>&1"); }

bool Succeeds(const std::string& command) { return std::system((command + " >/dev/null 2>&1").c_str()) == 0; }

void WriteText(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::trunc);
    out << text;
}

template <typename Condition>
bool WaitFor(Condition condition, std::chrono::seconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (std::chrono::steady_clock::now() < end) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return condition();
}

// A cupsd of the test's own, stopped and cleaned up with the object.
class PrivateCups {
public:
    explicit PrivateCups(const TempFolder& dir) : root_(dir.Path()) {
        // The filters run as the lp user and must reach the spool through this folder.
        ::chmod(root_.c_str(), 0755);
        for (const char* sub : {"conf", "conf/ppd", "conf/ssl", "spool", "cache", "state", "log", "home"})
            fs::create_directories(root_ + "/" + sub);
        fs::create_directories(root_ + "/spool/tmp");
        fs::create_directories(Out());
        ::chmod((root_ + "/spool/tmp").c_str(), 01777);
        ::chmod(Out().c_str(), 01777);
        WriteText(root_ + "/conf/cupsd.conf",
                  "Listen " + Socket() + "\nLogLevel warn\nWebInterface no\nBrowsing off\nDefaultAuthType None\n"
                  "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
                  "<Location /admin>\n  Order allow,deny\n  Allow all\n</Location>\n"
                  "<Policy default>\n  <Limit All>\n    Order deny,allow\n  </Limit>\n</Policy>\n");
        WriteText(root_ + "/conf/cups-files.conf",
                  "ServerRoot " + root_ + "/conf\nRequestRoot " + root_ + "/spool\nTempDir " + root_ +
                      "/spool/tmp\nCacheDir " + root_ + "/cache\nStateDir " + root_ + "/state\nAccessLog " +
                      root_ + "/log/access_log\nErrorLog " + root_ + "/log/error_log\nPageLog " + root_ +
                      "/log/page_log\nSandboxing Relaxed\n");
        backendName_ = "tolva2test" + std::to_string(::getpid());
        backendConf_ = "/etc/cups/cups-pdf-" + backendName_ + ".conf";
    }

    ~PrivateCups() {
        if (pid_ > 0) {
            ::kill(pid_, SIGTERM);
            const bool ended = WaitFor([&] { return ::waitpid(pid_, nullptr, WNOHANG) == pid_; }, std::chrono::seconds(10));
            if (!ended) {
                ::kill(pid_, SIGKILL);
                ::waitpid(pid_, nullptr, 0);
            }
        }
        std::error_code error;
        fs::remove(backendConf_, error);
    }

    std::string Socket() const { return root_ + "/cups.sock"; }
    std::string Out() const { return root_ + "/out"; }
    std::string Log() const {
        std::ifstream in(root_ + "/log/error_log");
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    // Starts the server and adds the PDF printer as the default; the reason on failure.
    std::string Start() {
        std::ofstream conf(backendConf_, std::ios::trunc);
        conf << "Out " << Out() << "\nGrp lpadmin\n";
        if (!conf.flush()) return "cannot write " + backendConf_ + " (the PDF back end reads only /etc/cups)";
        // Clients of this process and its children talk to this server only.
        setenv("CUPS_SERVER", Socket().c_str(), 1);
        setenv("CUPS_SERVERROOT", (root_ + "/conf").c_str(), 1);
        setenv("HOME", (root_ + "/home").c_str(), 1);
        pid_ = ::fork();
        if (pid_ == 0) {
            const std::string log = root_ + "/log/stdout";
            std::freopen(log.c_str(), "w", stdout);
            std::freopen(log.c_str(), "a", stderr);
            ::execl("/usr/sbin/cupsd", "cupsd", "-f", "-c", (root_ + "/conf/cupsd.conf").c_str(), "-s",
                    (root_ + "/conf/cups-files.conf").c_str(), static_cast<char*>(nullptr));
            ::_exit(127);
        }
        if (pid_ < 0) return "fork failed";
        if (!WaitFor([&] { return Succeeds("lpstat -r | grep -q \"scheduler is running\""); }, std::chrono::seconds(15)))
            return "cupsd did not answer within 15 s: " + Log();
        // On its way to PostScript the game's PDF goes through cairo, which names each glyph
        // after its character, so that the PDF coming out still reads as text.
        const std::string add = Output("timeout 30 lpadmin -p PDF -v cups-pdf:/" + backendName_ + " -P " + PdfPpd +
                                       " -o pdftops-renderer-default=pdftocairo -E && timeout 30 lpadmin -d PDF"
                                       " && timeout 30 lpoptions -d PDF");
        if (!Succeeds("lpstat -d | grep -q PDF")) return "the PDF printer could not be added: " + add;
        return {};
    }

private:
    std::string root_;
    std::string backendName_;
    std::string backendConf_;
    pid_t pid_ = -1;
};

std::string FirstPdf(const std::string& folder) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error))
        if (entry.path().extension() == ".pdf" && entry.file_size(error) > 0) return entry.path().string();
    return {};
}

} // namespace

TEST(StatisticsPrinter, PrintsAllPlayedLevelsOnTheDefaultPrinter) {
    for (const char* tool : {"/usr/sbin/cupsd", "/usr/sbin/lpadmin", "/usr/bin/lpoptions", "/usr/bin/pdftotext",
                             PdfBackend, PdfPpd})
        if (!fs::exists(tool)) GTEST_SKIP() << "CUPS cannot start here: " << tool << " is missing";
    TempFolder dir;
    PrivateCups cups(dir);
    const std::string failure = cups.Start();
    if (!failure.empty()) GTEST_SKIP() << "CUPS cannot start here: " << failure;

    StatTable table;
    for (int i = 0; i < StatTable::LevelCount; ++i) {
        table.Row(i).Played = 1;
        table.Row(i).MaxClicks = static_cast<std::int16_t>(20 + i % 5);
    }
    tolva::PrintStatToPrinter(table);
    EXPECT_EQ(table.Totals().Played, 100);
    EXPECT_EQ(table.Totals().MaxClicks, 2200);

    std::string pdf;
    const bool printed = WaitFor(
        [&] {
            // The job has left the queue, and the file it made is whole.
            if (!Output("lpstat -o").empty()) return false;
            pdf = FirstPdf(cups.Out());
            return !pdf.empty() && Succeeds("pdfinfo '" + pdf + "'");
        },
        std::chrono::seconds(90));
    ASSERT_TRUE(printed) << "no PDF came out of the printer; server log:\n" << cups.Log();

    const std::string text = Output("pdftotext -layout '" + pdf + "' -");
    const auto pageBreak = text.find('\f');
    ASSERT_NE(pageBreak, std::string::npos) << text;
    const std::string page1 = text.substr(0, pageBreak);
    const std::string rest = text.substr(pageBreak);
    EXPECT_NE(page1.find("TOLVA II STATISTICS - " + tolva::TodayShortDate()), std::string::npos) << page1;
    EXPECT_NE(page1.find("Page 1"), std::string::npos);
    EXPECT_NE(rest.find("Page 2"), std::string::npos) << rest;
    // The totals: 100 levels, 2200 clicks at most, 100 plays.
    EXPECT_NE(rest.find("2200"), std::string::npos) << rest;
}
