#pragma once

#include <windows.h>

#include <memory>
#include <span>
#include <string>

#include "com/pointer.h"
#include "host/failure.h"

namespace sylvex::host {

/// A script in VBScript or JScript (files .vbs and .js), run by the platform's own engine in the form's process. What
/// it defines stays callable until the object goes.
class Script {
public:
    /// Starts the engine for the file's language; throws Failure when there is none or the file cannot be read.
    /// `window` owns the engine's message boxes.
    Script(const std::wstring& file, HWND window);
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    /// Makes an object known to the script under a name. Before Run().
    void AddObject(const std::wstring& name, ComPtr<IDispatch> object);
    /// Runs the text of the file; throws Failure with the place of the first error.
    void Run();
    /// Runs the script's procedure `name` with these arguments, the last one first, by-reference ones included; S_FALSE
    /// when it has none.
    HRESULT Call(const std::wstring& name, std::span<VARIANT> reversed);
    /// What went wrong in a procedure that was called, once; empty when nothing did.
    std::wstring TakeError();

private:
    class Site;
    struct Engine;
    std::wstring m_file;
    ComPtr<Site> m_site;
    std::unique_ptr<Engine> m_engine;
};

}  // namespace sylvex::host
