#include "extui/ConnectionSettingsDialog.h"

#include "com/Boundary.h"
#include "extui/BandChoice.h"
#include "extui/RapidoChoice.h"
#include "extui/ResourceText.h"
#include "extui/RoamingChoice.h"
#include "profile/CCXConnectionSettings.h"
#include "resources/resource.h"
#include "values/RegistrySwitches.h"
#include "values/RegistryValues.h"

#include <utility>

namespace
{
constexpr INT_PTR endedByOk = 1;
constexpr INT_PTR endedByCancel = 0;

// The record being edited, once its dialog has been initialised.
CCXConnectionSettings* pCurrentSettings = nullptr;

// Whether the dialog ran out of memory before it could show the record.
bool bInitialisationFailed = false;

bool IsRadioMeasurementHidden()
{
    DWORD dwNoCcx = 0;
    const auto& noCcx = RegistrySwitches::noCcx;
    RegReadDword(HKEY_LOCAL_MACHINE, noCcx.szSubKey, noCcx.szValueName, &dwNoCcx);
    return dwNoCcx != 0;
}

LONG CheckedFlag(HWND hwndDialog, int nId)
{
    return IsDlgButtonChecked(hwndDialog, nId) == BST_CHECKED ? 1 : 0;
}

void ShowFlag(HWND hwndDialog, int nId, LONG lFlag)
{
    CheckDlgButton(hwndDialog, nId, lFlag == 1 ? BST_CHECKED : BST_UNCHECKED);
}

// Times that were never set get their defaults once Radio Measurement is on.
void CompleteTimes(CCXConnectionSettings& settings)
{
    CCXConnectionSettings defaults;
    defaults.SetDefaults();
    if (settings.maxOffChannelTimeMs == CCXConnectionSettings::NotSet)
        settings.maxOffChannelTimeMs = defaults.maxOffChannelTimeMs;
    if (settings.minOnChannelTimeMs == CCXConnectionSettings::NotSet)
        settings.minOnChannelTimeMs = defaults.minOnChannelTimeMs;
}

void Initialise(HWND hwndDialog, CCXConnectionSettings& settings)
{
    SetWindowTextW(hwndDialog, CResourceText(IDS_CONNECTION_SETTINGS).Get());
    pCurrentSettings = &settings;
    ShowFlag(hwndDialog, IDC_RADIO_MEASUREMENT, settings.radioMeasurement);
    ShowBands(hwndDialog, settings.connectionContext);
    ShowRapido(hwndDialog, settings.rapido);
    ShowFlag(hwndDialog, IDC_ADVANCED_ROAMING, settings.advancedRoaming);
    ShowRoamingOption(hwndDialog, settings.roamingOption);
    EnableRoamingOption(hwndDialog);
    // A hidden check-box keeps its state and counts with it.
    if (IsRadioMeasurementHidden())
        ShowWindow(GetDlgItem(hwndDialog, IDC_RADIO_MEASUREMENT), SW_HIDE);
}

void TellNoBandSelected()
{
    const CResourceText caption(IDS_CONNECTION_SETTINGS);
    const CResourceText text(IDS_NO_BAND_SELECTED);
    MessageBoxW(nullptr, text.Get(), caption.Get(), MB_OK);
}

void Confirm(HWND hwndDialog, CCXConnectionSettings& settings)
{
    settings.radioMeasurement = CheckedFlag(hwndDialog, IDC_RADIO_MEASUREMENT);
    if (settings.radioMeasurement == 1)
        CompleteTimes(settings);
    if (!IsAnyBandChecked(hwndDialog))
    {
        TellNoBandSelected();
        return;
    }
    StoreBands(hwndDialog, settings.connectionContext);
    settings.rapido = CheckedFlag(hwndDialog, IDC_RAPIDO);
    settings.advancedRoaming = CheckedFlag(hwndDialog, IDC_ADVANCED_ROAMING);
    if (settings.advancedRoaming == 1)
        ReadRoamingOption(hwndDialog, &settings.roamingOption);
    EndDialog(hwndDialog, endedByOk);
}

// The whole parameter is compared: the control's identifier with notification code 0.
void Command(HWND hwndDialog, WPARAM wParam)
{
    if (wParam == IDOK && pCurrentSettings)
        Confirm(hwndDialog, *pCurrentSettings);
    else if (wParam == IDCANCEL)
        EndDialog(hwndDialog, endedByCancel);
    else if (wParam == IDC_ADVANCED_ROAMING)
        EnableRoamingOption(hwndDialog);
}
} // namespace

BOOL RunConnectionSettingsDialog(HWND hwndParent, CCXConnectionSettings& settings)
{
    // A dialog that fails to initialise must not write to the record of one before; and should a host open a dialog out of
    // another, the outer one gets its own record back.
    CCXConnectionSettings* const pOuterSettings = std::exchange(pCurrentSettings, nullptr);
    const INT_PTR nResult = DialogBoxParamW(ModuleState::ResourceModule(), MAKEINTRESOURCEW(IDD_CONNECTION_SETTINGS), hwndParent,
                                            ConnectionSettingsDialogProc, reinterpret_cast<LPARAM>(&settings));
    pCurrentSettings = pOuterSettings;
    if (std::exchange(bInitialisationFailed, false))
        throw std::bad_alloc();
    return static_cast<BOOL>(nResult);
}

INT_PTR CALLBACK ConnectionSettingsDialogProc(HWND hwndDialog, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    const HRESULT hr = AtBoundary(
        [&]
        {
            NeedAdapterList();
            if (uMessage == WM_INITDIALOG && lParam)
                Initialise(hwndDialog, *reinterpret_cast<CCXConnectionSettings*>(lParam));
            else if (uMessage == WM_COMMAND)
                Command(hwndDialog, wParam);
            return S_OK;
        });
    // A dialog that shows half of the record would save the wrong half. Any other message that ran out of memory is given
    // up where it stands: the dialog stays and can still be cancelled.
    if (FAILED(hr) && uMessage == WM_INITDIALOG)
    {
        bInitialisationFailed = true;
        EndDialog(hwndDialog, endedByCancel);
    }
    return FALSE;
}
