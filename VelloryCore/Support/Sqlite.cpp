// SPDX-License-Identifier: Apache-2.0
#include "Support/Sqlite.h"

#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <sqlite3.h>

#include "Support/Text.h"

namespace vellory::Sqlite {

namespace fs = std::filesystem;

namespace {

using SteadyClock = std::chrono::steady_clock;

/// How many instructions of the engine's machine may pass between two looks at the budget. Small,
/// because one of them may copy a value of the greatest length.
constexpr int instructionsBetweenChecks = 50;

std::string message(sqlite3* handle) {
    return Text::repairedUtf8(sqlite3_errmsg(handle));
}

void refuse(sqlite3_context* context, int /*count*/, sqlite3_value** /*arguments*/) {
    sqlite3_result_error(context, "functions are switched off", -1);
}

/// Takes functions of several arguments away. A table may have columns that are computed, and some
/// functions take time quadratic in their arguments' length without ever looking at the budget.
void switchOffFunctions(sqlite3* handle) {
    struct Function {
        std::string name;
        int arguments = 0;
    };
    std::vector<Function> functions;
    sqlite3_stmt* list = nullptr;
    if (sqlite3_prepare_v2(handle, "PRAGMA function_list", -1, &list, nullptr) == SQLITE_OK) {
        while (sqlite3_step(list) == SQLITE_ROW) {
            const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(list, 0));
            const int arguments = sqlite3_column_int(list, 4);
            // coalesce is part of the language: it picks a value and computes nothing.
            if (name != nullptr && (arguments < 0 || arguments > 1) &&
                std::string_view(name) != "coalesce") {
                functions.push_back({name, arguments});
            }
        }
    }
    sqlite3_finalize(list);
    for (const Function& function : functions) {
        // Marked as harmless, so that a table with computed columns that nobody reads stays
        // readable.
        sqlite3_create_function_v2(handle, function.name.c_str(), function.arguments,
                                   SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                   refuse, nullptr, nullptr, nullptr);
    }
}

void harden(sqlite3* handle, const Limits& limits) {
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_drop_modules(handle, nullptr);

    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, limits.valueBytes);
    sqlite3_limit(handle, SQLITE_LIMIT_SQL_LENGTH, 256 * 1024);
    sqlite3_limit(handle, SQLITE_LIMIT_EXPR_DEPTH, 200);
    sqlite3_limit(handle, SQLITE_LIMIT_VDBE_OP, 25'000);
    sqlite3_limit(handle, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 64);
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(handle, SQLITE_LIMIT_TRIGGER_DEPTH, 1);
    sqlite3_limit(handle, SQLITE_LIMIT_WORKER_THREADS, 0);

    switchOffFunctions(handle);
    // A mapped file that its owner cuts short would end this process; room to sort without files.
    sqlite3_exec(handle, "PRAGMA mmap_size=0; PRAGMA cache_size=-32768", nullptr, nullptr, nullptr);
}

constexpr bool standsForItself(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '/' ||
           c == '-' || c == '.' || c == '_' || c == '~';
}

} // namespace

std::string readOnlyUri(const fs::path& file) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string uri = "file:";
    const std::string path = file.string();
    for (std::size_t i = 0; i < path.size(); ++i) {
        // Two slashes in front would announce a host.
        const bool announcesHost = i == 1 && path.starts_with("//");
        if (standsForItself(path[i]) && !announcesHost) {
            uri += path[i];
        } else {
            const auto byte = static_cast<unsigned char>(path[i]);
            uri += '%';
            uri += digits[byte >> 4U];
            uri += digits[byte & 0xFU];
        }
    }
    return uri + "?mode=ro&immutable=1";
}

struct Database::Budget {
    SteadyClock::time_point deadline;
    std::int64_t memory = 0;

    /// Whether the engine has to stop.
    bool isSpent() const {
        return SteadyClock::now() >= deadline || sqlite3_memory_used() > memory;
    }
};

Database::Database(sqlite3* handle, std::shared_ptr<Budget> budget)
    : budget_(std::move(budget)), handle_(handle) {}

void Database::Closer::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

std::expected<Database, Error> Database::open(const fs::path& file, const Limits& limits) {
    // Only regular files: opening a pipe in the file's place would wait for a writer forever.
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        const auto reason = error ? error : std::make_error_code(std::errc::invalid_argument);
        return std::unexpected(Error{Error::Kind::cannotOpen, reason.message()});
    }
    // A zero byte would end the path early and so name another file.
    if (file.string().find('\0') != std::string::npos) {
        const auto reason = std::make_error_code(std::errc::invalid_argument);
        return std::unexpected(Error{Error::Kind::cannotOpen, reason.message()});
    }
    const auto deadline = SteadyClock::now() + limits.time;
    sqlite3* handle = nullptr;
    const int status = sqlite3_open_v2(readOnlyUri(file).c_str(), &handle,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
    Database database(handle,
                      std::make_shared<Budget>(deadline, sqlite3_memory_used() + limits.memory));
    if (status != SQLITE_OK) {
        return std::unexpected(Error{Error::Kind::cannotOpen, message(handle)});
    }
    // Before anything else, because some settings already read the file's tables.
    sqlite3_progress_handler(
        handle, instructionsBetweenChecks,
        [](void* budget) { return static_cast<const Budget*>(budget)->isSpent() ? 1 : 0; },
        database.budget_.get());
    harden(handle, limits);
    return database;
}

std::expected<Statement, Error> Database::prepare(const std::string& query) const {
    sqlite3_stmt* handle = nullptr;
    const int status = sqlite3_prepare_v2(handle_.get(), query.c_str(), -1, &handle, nullptr);
    if (status != SQLITE_OK || handle == nullptr) {
        return std::unexpected(Error{Error::Kind::cannotQuery, message(handle_.get())});
    }
    return Statement(handle);
}

void Statement::Finalizer::operator()(sqlite3_stmt* handle) const {
    sqlite3_finalize(handle);
}

bool Statement::step() {
    const int status = sqlite3_step(handle_.get());
    isComplete_ = status == SQLITE_DONE;
    return status == SQLITE_ROW;
}

Statement::Type Statement::type(int column) const {
    switch (sqlite3_column_type(handle_.get(), column)) {
    case SQLITE_INTEGER:
        return Type::integer;
    case SQLITE_FLOAT:
        return Type::real;
    case SQLITE_TEXT:
        return Type::text;
    case SQLITE_BLOB:
        return Type::blob;
    default:
        return Type::null;
    }
}

std::optional<std::int64_t> Statement::integer(int column) const {
    switch (type(column)) {
    case Type::integer:
        return sqlite3_column_int64(handle_.get(), column);
    case Type::real: {
        constexpr double limit = 9'223'372'036'854'775'808.0; // 2^63
        const double number = std::trunc(sqlite3_column_double(handle_.get(), column));
        if (number >= -limit && number < limit) {
            return static_cast<std::int64_t>(number);
        }
        return std::nullopt;
    }
    case Type::text: {
        const std::string spelled = text(column).value_or("");
        const std::string_view digits = Text::trimmed(spelled);
        std::int64_t number = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (error == std::errc() && end == digits.data() + digits.size()) {
            return number;
        }
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

std::optional<std::string> Statement::text(int column) const {
    const Type stored = type(column); // asked first: reading a value as text may convert it
    if (stored == Type::null) {
        return std::nullopt;
    }
    const auto* start = reinterpret_cast<const char*>(sqlite3_column_text(handle_.get(), column));
    if (start == nullptr) {
        return stored == Type::blob ? std::optional<std::string>("") : std::nullopt;
    }
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column));
    const std::string_view found(start, length);
    return Text::isValidUtf8(found) ? std::string(found) : Text::repairedUtf8(found);
}

std::optional<std::string> Statement::bytes(int column) const {
    if (type(column) != Type::blob && type(column) != Type::text) {
        return std::nullopt;
    }
    const auto* start = static_cast<const char*>(sqlite3_column_blob(handle_.get(), column));
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column));
    return start == nullptr ? std::string() : std::string(start, length);
}

} // namespace vellory::Sqlite
