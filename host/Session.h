// One visit of a command to the extension: output split, module loaded, class activated, and all of it undone.
#pragma once

#include "host/Module.h"
#include "host/OutputSplit.h"
#include "host/Profile.h"

// What the commands that use the extension have in common.
struct SessionOptions
{
    std::string strModule; // UTF-8; empty for the one beside the program
    bool bRegistered = false;
    std::string strTrace; // as COutputSplit takes it
};

class CSession
{
public:
    // Throws CHostError.
    explicit CSession(const SessionOptions& options);

    IDot11ExtUI& Root() const
    {
        return *m_root.Get();
    }
    void Print(std::string_view text)
    {
        m_output.Write(text);
    }
    // The profile itself, for another program to read. Throws CHostError where a person would see what is never shown.
    void PrintProfile(const CProfile& profile);
    std::string TakeTrace()
    {
        return m_output.TakeTrace();
    }
    // To be called when everything else that was obtained is released: ends the use of the module. Throws CHostError
    // when the module still holds objects.
    void Close();

private:
    COutputSplit m_output;
    std::optional<CLoadedModule> m_module;
    std::optional<CClassRegistration> m_registration;
    CComRef<IDot11ExtUI> m_root;
};
