#pragma once

#include "com/dispatch.h"
#include "com/object.h"

/// Takes error reports and appends each to a text file. The control makes one object a report.
class Reporter final : public sylvex::CountedObject<sylvex::PlainDispatch> {
public:
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members) override;
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override;
};
