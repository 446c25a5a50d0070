// The program's commands. Each adds itself to the parser; its work is handed out through `chosen` when the arguments
// name it.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>

using CommandWork = std::function<void()>;

void AddCheckCommand(CLI::App& app, CommandWork& chosen);
void AddShowCommand(CLI::App& app, CommandWork& chosen);
void AddSelectCommand(CLI::App& app, CommandWork& chosen);
void AddConfigureCommand(CLI::App& app, CommandWork& chosen);
void AddPageCommand(CLI::App& app, CommandWork& chosen);
void AddRegistrationCommands(CLI::App& app, CommandWork& chosen);
