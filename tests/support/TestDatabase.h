// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include <sqlite3.h>

namespace vellory::test {

/// A database that a test writes with the engine itself, the way another program would.
class TestDatabase {
  public:
    explicit TestDatabase(const std::filesystem::path& file) {
        if (sqlite3_open(file.c_str(), &handle_) != SQLITE_OK) {
            throw std::runtime_error("no test database");
        }
    }
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;
    ~TestDatabase() { sqlite3_close(handle_); }

    void run(const std::string& sql) const {
        if (sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(handle_));
        }
    }

  private:
    sqlite3* handle_ = nullptr;
};

} // namespace vellory::test
