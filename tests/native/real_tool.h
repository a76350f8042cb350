#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace sylvex {

/// A folder of its own on the real disk for tools that are asked what they make of it. It goes with the object.
class RealFolder {
public:
    RealFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "sylvexXXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::filesystem::filesystem_error("mkdtemp", name, {});
        m_path = m_top = name;
    }
    ~RealFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_top, ignored);
    }
    RealFolder(const RealFolder&) = delete;
    RealFolder& operator=(const RealFolder&) = delete;

    /// Goes to a folder below, or back with "..".
    void Enter(const std::string& path) { m_path = (m_path / path).lexically_normal(); }
    void Clear()
    {
        std::filesystem::remove_all(m_path);
        std::filesystem::create_directory(m_path);
    }
    void MakeFolder(const std::string& path) { std::filesystem::create_directories(m_path / path); }
    void Write(const std::string& path, const std::string& text)
    {
        std::filesystem::create_directories((m_path / path).parent_path());
        std::ofstream(m_path / path, std::ios::binary) << text;
    }
    /// What a command of the shell prints in the folder, line by line.
    std::vector<std::string> Lines(const std::string& command)
    {
        std::vector<std::string> lines;
        FILE* const pipe = popen(("cd '" + m_path.string() + "' && " + command).c_str(), "r");
        std::string line;
        for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe)) {
            if (letter != '\n') {
                line += static_cast<char>(letter);
                continue;
            }
            lines.push_back(std::move(line));
            line.clear();
        }
        EXPECT_EQ(pclose(pipe), 0) << command;
        return lines;
    }
    void Run(const std::string& command) { EXPECT_TRUE(Lines(command).empty()) << command; }

private:
    std::filesystem::path m_top;
    std::filesystem::path m_path;
};

}  // namespace sylvex
