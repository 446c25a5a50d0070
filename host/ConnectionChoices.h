// What a person can ask of the connection settings dialog, in the words of the command line.
#pragma once

#include <string>
#include <vector>

// A control of the dialog, and the state that it is to have: a check-box's 1 or 0, or the data of a list's entry.
struct WantedState
{
    int nControl;
    bool bIsList;
    long lWanted;
    const char* szWhenOutOfUse; // why the dialog may not offer the control
};

// Each argument is NAME=VALUE, in any case of letters. The result is in the order in which a person has to go. Throws
// std::invalid_argument for an unknown name or value, with the list of those that there are, and for a name that is set twice.
std::vector<WantedState> ChoicesOf(const std::vector<std::string>& arguments);

// The lines of a help text: each setting with its values.
std::string ChoicesHelp();
