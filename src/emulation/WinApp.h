#pragma once

/// Start and stop of a library: what an application object does when its module is loaded, and when
/// it is unloaded.
class CWinApp {
public:
    CWinApp() = default;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp() = default;

    /// False when the module cannot be used.
    virtual bool InitInstance() { return true; }
    /// The exit code of the module.
    virtual int ExitInstance() { return 0; }
};
