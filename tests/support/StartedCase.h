// A case of a test program that runs beside the one that started it, and may be ended at any moment.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

namespace tests
{
class CStartedCase
{
public:
    // Starts the case, a disabled one too. It gets this process's environment. Throws std::system_error when the program
    // cannot be started.
    CStartedCase(const std::filesystem::path& program, const std::string& name);
    // What still runs is killed.
    ~CStartedCase();
    CStartedCase(const CStartedCase&) = delete;
    CStartedCase& operator=(const CStartedCase&) = delete;

    // Ends the process wherever it is, without a chance to put anything in order, and waits until it is gone.
    void Kill();
    // Waits for the end; true when the case passed, false when it did not, was killed, or took longer.
    bool HasPassedWithin(std::chrono::seconds limit);

private:
    void* m_pProcess = nullptr; // the system's handle or number of the process, null once its end is known
};
} // namespace tests
