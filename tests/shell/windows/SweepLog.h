// Which points of a sweep have been tried, over several runs of the program.
#pragma once

#include <cstdlib>
#include <fstream>
#include <set>
#include <string>

/// A file with a line for each point that has begun: "name: outcome". The environment variable
/// SWEEP_LOG names it; without one nothing is kept.
class SweepLog {
  public:
    SweepLog() {
        if (const char* const path = std::getenv("SWEEP_LOG")) {
            ReadAndEnd(path);
            file.open(path, std::ios::app | std::ios::binary);
        }
    }

    bool HasBegun(const std::string& point) const { return begun.count(point) > 0; }
    /// The name is in the file before the point begins, which may end the process.
    void Begin(const std::string& point) {
        file << point << ": " << std::flush;
        begun.insert(point);
    }
    void End(const std::string& outcome) { file << outcome << '\n' << std::flush; }

  private:
    /// A line without an outcome is that of a point that has ended the process.
    void ReadAndEnd(const char* path) {
        bool isInLine = false;
        {
            std::ifstream before(path, std::ios::binary);
            std::string line;
            while (std::getline(before, line)) {
                begun.insert(line.substr(0, line.find(':')));
                isInLine = before.eof();
            }
        }
        if (isInLine) {
            std::ofstream(path, std::ios::app | std::ios::binary) << "the process ended\n";
        }
    }

    std::set<std::string> begun;
    std::ofstream file;
};
