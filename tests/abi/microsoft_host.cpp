// A host that uses every exported function and member, also the private ones. Compiled for
// Microsoft's compiler, its object imports all their names (check_microsoft_names.py).

#include "tests/abi/class_layout.h"
#include "tests/support/private_members.h"

using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

void CallFunctions() {
  Init(L"", L"");
  Init0(L"");
  ExportPhyVal();
  ClearErrors();
  GetError(static_cast<int32_t>(GetErrorsCount()));
  LoadDictionary(LANG(L""), L"");
  UseLanguage(L"");
}

bool UseDouble(Double& value) {
  Double byCode(1.0, 0.0, 0.0, 10001);
  Double byText(1.0, 0.0, 0.0, L"in");
  value = byCode + byText - byCode * 2.0 / 3.0;
  value.ConvertTo(0.1, 0.0, 10002);
  value.to_string();
  value.to_string(L',');
  CheckCorrect(value);
  CheckCorrect(value, byText);
  return value == byText || value < byText || value > byText ||
         T(value) + Ts(value, 1.0) + Vs(value, 1.0) < value.Return();
}

int UseValueType(ValueType& row) {
  ValueType made(1, 1.0, L"", L"");
  ValueType copied(row);
  ValueType moved(static_cast<ValueType&&>(row));
  return made.GetSid() + copied.GetStype() + moved.code;
}
