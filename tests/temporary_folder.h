#pragma once

#include "host/base/lightweight_string.h"
#include "host/services/file_names.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <unistd.h>
#include <utility>

namespace wainscot {

/// A folder for one test; it is removed with all its contents.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "wainscot-test-XXXXXX").string();
        if (mkdtemp(name.data())) path_ = name;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    std::string const& path() const { return path_; }
    std::string path(std::string const& name) const { return path_ + "/" + name; }
    LightweightString<char> text(std::string const& name) const {
        return LightweightString<char>(path(name));
    }

    /// The path as the program knows it.
    LightweightString<wchar_t> wide(std::string const& name) const { return fileNameFromBytes(text(name)); }
    LightweightString<wchar_t> wide() const { return fileNameFromBytes(LightweightString<char>(path_)); }

    void write(std::string const& name, std::string const& contents) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << contents;
    }
    std::string read(std::string const& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool has(std::string const& name) const { return std::filesystem::exists(path(name)); }

private:
    std::string path_;
};

/// Sets variables of the environment, and restores what they were.
class TestEnvironment {
public:
    TestEnvironment(std::initializer_list<std::pair<std::string, std::string>> values) {
        for (auto const& [name, value] : values) {
            char const* const before = std::getenv(name.c_str());
            before_[name] = before ? std::optional<std::string>(before) : std::nullopt;
            setenv(name.c_str(), value.c_str(), 1);
        }
    }
    ~TestEnvironment() {
        for (auto const& [name, value] : before_) {
            if (value)
                setenv(name.c_str(), value->c_str(), 1);
            else
                unsetenv(name.c_str());
        }
    }
    TestEnvironment(TestEnvironment const&) = delete;
    TestEnvironment& operator=(TestEnvironment const&) = delete;

private:
    std::map<std::string, std::optional<std::string>> before_;
};

/// Root becomes an ordinary user for a while.
class OrdinaryUser {
public:
    OrdinaryUser() : wasRoot_(geteuid() == 0) {
        constexpr uid_t nobody = 65534;
        EXPECT_EQ(wasRoot_ ? seteuid(nobody) : 0, 0);
    }
    ~OrdinaryUser() { EXPECT_EQ(wasRoot_ ? seteuid(0) : 0, 0); }
    OrdinaryUser(OrdinaryUser const&) = delete;
    OrdinaryUser& operator=(OrdinaryUser const&) = delete;

private:
    bool wasRoot_;
};

} // namespace wainscot
