#include "base/Sqlite.h"
#include "categories/AppCategoryList.h"
#include "categories/CategoryStore.h"
#include "engine/MonitorLog.h"
#include "engine/MonitorStore.h"
#include "platform/Directories.h"
#include "platform/qt/QtLocaleText.h"
#include "platform/virtual/VirtualMachine.h"
#include "tests/fuzz/FuzzInput.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace quillbrook {
namespace {

constexpr double kNow = 1767268800;
constexpr std::int64_t kSystemRules = 113; // that each store begins with
constexpr std::int64_t kCategories = 13;

constexpr auto kKnownTexts
    = std::to_array<std::string_view>({"com.apple.", "com.apple.Safari", "org.mozilla.firefox",
        "unknown", "exact", "bundle_prefix", "user", "system", "'", "') --", "Editor", "编辑器"});

/// A store in memory, with the list of its applications.
class Store {
public:
    Store()
    {
        MonitorLog log(machine.platform().clock);
        MonitorStore store(machine.platform(), log);
        const std::string path = storePath(*machine.platform().directories.dataDirectory());
        require(store.dbOpen(path));
        connection = openConnection(path, SQLITE_OPEN_READWRITE).connection;
        store.dbCreateTables();
    }

    void clear() const
    {
        run("DELETE FROM app_sessions; DELETE FROM categories WHERE id > "
            + std::to_string(kCategories) + "; DELETE FROM app_categories WHERE id > "
            + std::to_string(kSystemRules));
    }

    void run(const std::string& sql) const
    {
        require(
            sqlite3_exec(connection.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
    }

    /// Inserts what the columns take.
    void insert(const char* sql, std::initializer_list<std::string> texts) const
    {
        const Statement statement = prepare(connection.get(), sql);
        int place = 0;
        for (const std::string& text : texts) {
            sqlite3_bind_text(statement.get(), ++place, text.c_str(), static_cast<int>(text.size()),
                SQLITE_TRANSIENT);
        }
        sqlite3_step(statement.get());
    }

    /// How many rules there are beside those for one key.
    std::int64_t rulesBeside(const std::string& key) const
    {
        const Statement statement = prepare(
            connection.get(), "SELECT COUNT(*) FROM app_categories WHERE match_key IS NOT ?");
        sqlite3_bind_text(
            statement.get(), 1, key.c_str(), static_cast<int>(key.size()), SQLITE_TRANSIENT);
        require(sqlite3_step(statement.get()) == SQLITE_ROW);
        return sqlite3_column_int64(statement.get(), 0);
    }

    VirtualMachine machine{"/", kNow};
    Connection connection{};
};

std::string anyText(FuzzInput& input)
{
    const std::size_t choice = input.byte();
    return std::string(
        choice >= 128 ? kKnownTexts[choice % kKnownTexts.size()] : input.take(choice % 48));
}

void insertAnything(const Store& store, FuzzInput& input)
{
    const std::string first = anyText(input);
    const std::string second = anyText(input);
    switch (input.byte() % 3) {
    case 0:
        store.insert("INSERT INTO app_sessions (app_name, bundle_id, started_at) VALUES (?, ?, 1)",
            {first, second});
        break;
    case 1:
        store.insert(
            "INSERT INTO categories (key, label, color) VALUES (?, ?, '#123456')", {first, second});
        break;
    default:
        store.insert("INSERT INTO app_categories (match_key, match_type, category_id, source) "
                     "VALUES (?, ?, CAST(? AS INTEGER), ?)",
            {first, second, std::to_string(input.byte() % 20), anyText(input)});
        break;
    }
}

/// The user's choice for one application changes no rule for others.
void choose(const Store& store, AppCategoryList& list, FuzzInput& input)
{
    const AppEntry app = list.apps()[input.byte() % list.apps().size()];
    const std::int64_t choice = input.byte() % (kCategories + 1);
    const auto before = store.rulesBeside(app.bundleId);
    list.updateCategory(app, choice > 0 ? std::optional(choice) : std::nullopt);
    require(store.rulesBeside(app.bundleId) == before);
    const auto rules = CategoryStore::loadRuleSet(store.connection.get());
    require(choice > 0 || !rules.userExact.contains(app.bundleId));
}

} // namespace
} // namespace quillbrook

/// Whatever names, rules and texts to seek for there are, the list of applications shows what can
/// be shown, and a choice is the choice for that application alone.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    // Left standing at the end: SQLite's memory VFS is its default from here on.
    static Store& store = *[] {
        sqlite3_initialize();
        require(sqlite3_vfs_register(sqlite3_vfs_find("memdb"), 1) == SQLITE_OK);
        return new Store();
    }();
    FuzzInput input(data, size);
    const std::string sought = anyText(input);
    store.run("BEGIN");
    store.clear();
    for (int row = 0; row < 40 && !input.isEmpty(); ++row) {
        insertAnything(store, input);
    }
    store.run("COMMIT");

    AppCategoryList list(store.machine.platform());
    list.loadData();
    for (const AppEntry& app : list.apps()) {
        requireValid(app.appName);
        requireValid(app.bundleId);
        requireValid(app.categoryLabel);
    }
    list.setSearchText(sought);
    const auto found = list.filteredApps();
    require(found.size() <= list.apps().size());
    require(!sought.empty() || found.size() == list.apps().size());
    for (const AppEntry& app : list.apps()) {
        QtLocaleText().containsIgnoringCase(app.appName, sought);
        require(QtLocaleText().compareIgnoringCase(app.appName, app.appName) == 0);
    }
    if (!list.apps().empty()) {
        choose(store, list, input);
    }
    return 0;
}
