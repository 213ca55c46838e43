// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

/// Reading SQLite databases that other programs wrote and may be using right now.
///
/// A database is opened read-only and immutable: it is neither locked nor changed, no file is made
/// beside it, and what its owner has not yet moved out of a write-ahead log is not seen. It is
/// hostile until proven otherwise: views, triggers, extensions and virtual tables are switched off,
/// and reading ends when it has taken too long or too much memory.
namespace vellory::Sqlite {

/// How much reading one database may cost. The time counts from opening it.
struct Limits {
    std::chrono::milliseconds time{800};
    std::int64_t memory = 96LL * 1024 * 1024;
    /// The longest text or blob, and the longest row.
    int valueBytes = 4 * 1024 * 1024;
};

struct Error {
    enum class Kind {
        cannotOpen, ///< no such file, no right to read it, or not a regular file
        cannotQuery ///< not a database, damaged, or without the tables and columns asked for
    };
    Kind kind = Kind::cannotOpen;
    std::string message; ///< the engine's own words

    friend bool operator==(const Error&, const Error&) = default;
};

/// The address under which a file is opened. Whatever a path may hold (`?`, `#`, `%`, spaces, a
/// double slash in front) stays part of the path.
std::string readOnlyUri(const std::filesystem::path& file);

/// One query and the row it stands on. Must not outlive its database.
class Statement {
  public:
    enum class Type { null, integer, real, text, blob };

    /// Moves to the next row. False at the end of the rows, and also where a damaged database or a
    /// limit ends them early: `isComplete` tells which.
    bool step();
    bool isComplete() const { return isComplete_; }

    // The columns of the row, counted from 0. Columns hold whatever their writer put in them,
    // whatever type they were declared with.
    Type type(int column) const;
    /// A whole number; a fraction is cut off, a text is read as the number it spells. Nothing for
    /// NULL, blobs, other texts and numbers past 64 bits.
    std::optional<std::int64_t> integer(int column) const;
    /// A text, in UTF-8 whatever bytes the file has; a number as it is written; a blob as the text
    /// that its bytes spell. Nothing for NULL.
    std::optional<std::string> text(int column) const;
    /// The bytes of a blob or text. Nothing for NULL and numbers.
    std::optional<std::string> bytes(int column) const;

  private:
    friend class Database;
    explicit Statement(sqlite3_stmt* handle) : handle_(handle) {}

    struct Finalizer {
        void operator()(sqlite3_stmt* handle) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
    bool isComplete_ = false;
};

/// An open database. Closed with the object.
class Database {
  public:
    static std::expected<Database, Error> open(const std::filesystem::path& file,
                                               const Limits& limits = {});

    std::expected<Statement, Error> prepare(const std::string& query) const;

  private:
    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    struct Budget; ///< what the engine asks while it works; keeps its address
    Database(sqlite3* handle, std::shared_ptr<Budget> budget);

    std::shared_ptr<Budget> budget_;
    std::unique_ptr<sqlite3, Closer> handle_;
};

} // namespace vellory::Sqlite
