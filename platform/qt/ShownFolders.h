#pragma once

#include <QString>

#include <map>
#include <string>

namespace platform {

/// Folders for panels, which can show only UTF-8 names: a folder with another name is shown through a
/// temporary link. Main thread only.
class ShownFolders {
public:
    ShownFolders() = default;
    ShownFolders(const ShownFolders&) = delete;
    ShownFolders& operator=(const ShownFolders&) = delete;
    ~ShownFolders();

    /// What a panel can show the folder as; empty when it cannot.
    QString shown(const std::string& folder);
    /// What a panel's answer really names.
    std::string real(const QString& path) const;

private:
    std::string place; // of the links; empty until one is needed
    std::map<std::string, std::string> folders; // by their links
};

} // namespace platform
