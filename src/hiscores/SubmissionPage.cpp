#include "hiscores/SubmissionPage.h"

#include "hiscores/Hiscores.h"
#include "settings/GameSettings.h"
#include "support/ZenkorModule.h"

#include <filesystem>
#include <system_error>

namespace tolva {

std::string SubmissionPageBytes(const std::string& hiscoreUrl, const std::string& hiscoreString,
                                const std::optional<std::string>& stat) {
    // The blank in `name ="his"` is part of the page the server has always been sent.
    std::string page = "<html><body onload=\"document.his.submit()\"><form name =\"his\" method=\"POST\" action=\"";
    page += hiscoreUrl;
    page += "\" style=\"visibility: hidden;\"><input type=\"hidden\" name=\"hiscoredata\" value=\"";
    page += hiscoreString;
    if (stat) {
        page += "\"><textarea name=\"stat\">";
        page += *stat;
        page += "</textarea></form></body></html>";
    } else {
        page += "\"></form></body></html>";
    }
    return page;
}

std::optional<std::string> SubmittedStatistics(bool supplyStatFile, const std::string& statPath) {
    if (!supplyStatFile || !FileExists(statPath)) return std::nullopt;
    std::string bytes;
    if (!ReadWholeFile(statPath, bytes)) bytes.clear();
    return bytes;
}

std::string MakeSubmissionPage(const std::string& gameFolder, const GameSettings& settings, const Hiscores& table,
                               std::int16_t setKey) {
    const std::string hiscoreString = table.MakeHiscoreString(setKey);
    return SubmissionPageBytes(settings.HiscoreUrl, hiscoreString,
                               SubmittedStatistics(settings.SupplyStatFile, gameFolder + "stat.ini"));
}

std::string SubmissionPage::NativeFile() const { return NativePath(Path()); }

bool SubmissionPage::Exists() const { return FileExists(Path()); }

bool SubmissionPage::Remove() const {
    if (!Exists()) return true;
    ClearFileAttributes(Path());
    std::error_code error;
    std::filesystem::remove(WritablePath(Path()), error);
    return !Exists();
}

bool SubmissionPage::Write(const std::string& bytes) const {
    // A page that could not be removed must not be taken for the new one.
    if (!Remove()) return false;
    if (WriteWholeFile(Path(), bytes) != 0) {
        Remove();
        return false;
    }
    return Exists();
}

} // namespace tolva
