#include "installation/runtime/Call.h"

#include "installation/runtime/Faults.h"
#include "installation/runtime/FaultOutputs.h"
#include "installation/runtime/ResultCodes.h"
#include "installation/runtime/Trace.h"

#include <comdef.h>

#include <exception>

namespace devinst {

namespace {

// Thrown at the caller, who does not know it.
struct ThrownByPlan {};

std::string Joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

std::string DescribedOutput(const Output& output) {
    switch (output.kind) {
    case Output::Kind::Text:
        return Described(static_cast<const wchar_t*>(*static_cast<BSTR*>(output.place)));
    case Output::Kind::Variant:
        return Described(*static_cast<const VARIANT*>(output.place));
    case Output::Kind::Interface:
        return Described(static_cast<const void*>(*static_cast<IUnknown**>(output.place)));
    default:
        return Described(*static_cast<const LONG*>(output.place));
    }
}

void TraceCall(const CallSite& site, const std::vector<std::string>& arguments, HRESULT result,
               const std::vector<Output>& outputs) {
    if (!IsTracing())
        return;
    std::string line = site.label + " " + site.operation;
    if (!site.key.empty())
        line += " " + site.key;
    line += " (" + Joined(arguments) + ") -> " + ResultText(result);
    for (const Output& output : outputs) {
        if (output.place != nullptr && SUCCEEDED(result))
            line += ", " + DescribedOutput(output);
    }
    TraceLine(line);
}

void SetErrorText(const std::wstring& description) {
    ICreateErrorInfo* creator = nullptr;
    if (FAILED(CreateErrorInfo(&creator)))
        return;
    creator->SetDescription(const_cast<wchar_t*>(description.c_str()));
    IErrorInfo* information = nullptr;
    if (SUCCEEDED(
            creator->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&information)))) {
        SetErrorInfo(0, information);
        information->Release();
    }
    creator->Release();
}

HRESULT Report(const ComFailure& failure, EXCEPINFO* exception) {
    if (exception == nullptr) {
        SetErrorText(failure.description);
        return failure.code;
    }
    exception->scode = failure.code;
    if (!failure.description.empty())
        exception->bstrDescription = SysAllocString(failure.description.c_str());
    return DISP_E_EXCEPTION;
}

HRESULT RunWork(const std::function<HRESULT()>& work, EXCEPINFO* exception) {
    try {
        return work();
    } catch (const ComFailure& failure) {
        return Report(failure, exception);
    } catch (const std::exception& failure) {
        const std::string what = failure.what();
        return Report({E_UNEXPECTED, std::wstring(what.begin(), what.end())}, exception);
    } catch (const _com_error& failure) {
        return Report({failure.Error(), L""}, exception);
    } catch (...) {
        FailLoudly("an exception of no known kind inside a stand-in");
    }
}

HRESULT RunFaulty(const Fault& fault, const std::vector<Output>& outputs,
                  const std::function<HRESULT()>& work, EXCEPINFO* exception) {
    switch (fault.kind) {
    case FaultKind::Result:
        return fault.code;
    case FaultKind::Error:
        return Report({fault.code, fault.text}, exception);
    case FaultKind::Then: {
        const HRESULT real = RunWork(work, exception);
        return FAILED(real) ? real : fault.code;
    }
    case FaultKind::Sleep:
        Sleep(fault.milliseconds);
        return RunWork(work, exception);
    case FaultKind::Leak:
        SysAllocString(L"lost");
        return RunWork(work, exception);
    case FaultKind::Exit:
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(fault.code));
        Sleep(INFINITE);
        return E_UNEXPECTED;
    case FaultKind::Throw:
        throw ThrownByPlan();
    default:
        for (const Output& output : outputs)
            FillFaulty(output, fault);
        return S_OK;
    }
}

} // namespace

std::string MethodKey(std::size_t index) {
    std::string key(1, '[');
    return key.append(std::to_string(index)).append(1, ']');
}

HRESULT Perform(const CallSite& site, const std::vector<std::string>& arguments,
                const std::vector<Output>& outputs, const std::function<HRESULT()>& work,
                EXCEPINFO* exception) {
    for (const Output& output : outputs)
        EmptyOutput(output);
    const std::optional<Fault> fault = NextFault(site.className, site.operation);
    if (fault)
        TraceLine("fault " + site.label + " " + site.operation);
    const HRESULT result =
        fault ? RunFaulty(*fault, outputs, work, exception) : RunWork(work, exception);
    if (FAILED(result)) {
        for (const Output& output : outputs)
            DropOutput(output);
    }
    TraceCall(site, arguments, result, outputs);
    return result;
}

void TraceCallback(const char* operation, const std::vector<std::string>& arguments, HRESULT result,
                   const std::vector<std::string>& outputs) {
    std::string line = std::string("program ") + operation + " (" + Joined(arguments) + ") -> " +
                       ResultText(result);
    for (const std::string& output : outputs)
        line += ", " + output;
    TraceLine(line);
}

} // namespace devinst
