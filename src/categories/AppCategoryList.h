#pragma once

#include "base/Sqlite.h"
#include "base/Uuid.h"
#include "platform/Platform.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {

/// An application that has had a session, and the category that it falls into.
struct AppEntry {
    Uuid id = Uuid::random(); // tells the rows of a list apart, never stored
    std::string appName{};
    std::string bundleId = "unknown";
    std::string categoryKey{};
    std::string categoryLabel{};
    bool hasUserOverride = false; // the category is the user's own choice
};

/// Every application that ever had a session, under each of its identifiers, and the user's choice
/// of a category for it. Main thread only.
///
/// Each operation works on a connection of its own, which waits for no other writer. What the store
/// refuses has no effect on it and is told to nobody.
class AppCategoryList {
public:
    explicit AppCategoryList(const Platform& platform);

    /// Reads the applications, by name, and what they are. Takes as long as all of the history.
    void loadData();

    /// Puts an identifier into a category for good, or gives it back to the rules when there is no
    /// `categoryId`. Of the entries with that identifier only the first is told before the next
    /// load. It counts as overridden even where the store refused the choice.
    void updateCategory(const AppEntry& app, std::optional<std::int64_t> categoryId);

    /// What is sought for in the names, capitals and small letters alike; empty for all.
    void setSearchText(std::string text);
    const std::string& searchText() const { return sought; }

    /// The entries to show, in their order.
    std::vector<AppEntry> filteredApps() const;

    const std::vector<AppEntry>& apps() const { return entries; }

    /// Until the first load is over.
    bool isLoading() const { return isFirstLoadDue; }

private:
    Connection openDBReadWrite() const;

    Platform platform;
    std::vector<AppEntry> entries{};
    std::string sought{};
    bool isFirstLoadDue = true;
};

} // namespace quillbrook
