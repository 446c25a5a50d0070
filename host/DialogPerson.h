// A person at the module's connection settings dialog: a second thread, which works the dialog of this process by the
// window messages that a hand at the mouse would cause.
#pragma once

#include "host/ConnectionChoices.h"

#include <windows.h>

#include <chrono>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

// What the person tells afterwards.
struct PersonReport
{
    std::vector<std::string> messages; // the texts of the message boxes that came up
    std::string strRefusal;            // why the person cancelled the dialog; empty when it was confirmed
};

class CDialogPerson
{
public:
    // Waits for the dialog, brings its controls into the states and confirms. A control that has to change and is
    // disabled or hidden, a message box of the dialog, and 20 seconds without an end make the person cancel instead.
    // Message boxes are answered. Whoever cannot wait for a dialog that even then does not end has to see to it.
    explicit CDialogPerson(std::vector<WantedState> states);

    // To be called once the dialog operation has returned.
    PersonReport Finish();

private:
    void Run(const std::stop_token& stop);
    void Work(const std::stop_token& stop);
    void Leave(const std::stop_token& stop);
    void Answer(HWND hwndBox);
    void Pause() const;

    std::vector<WantedState> m_states;
    PersonReport m_report;
    std::chrono::steady_clock::time_point m_end;
    std::jthread m_thread; // last: it uses the others
};
