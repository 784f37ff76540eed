#include "prompts/CObjClassInf.h"
#include "prompts/CStInf.h"
#include "prompts/PublicInf.h"
#include "prompts/SwicthInfo.h"
#include "prompts/TCompDrawInf.h"
#include "prompts/prompt_lookup.h"

using lorv::PromptAt;
using lorv::PromptFor;

namespace CStInf {

LPCTSTR GetErrInf(ErrPompt prompt) {
  return PromptAt(lorv::kSteelInputTable, static_cast<int>(prompt));
}
LPCTSTR GetErrInf(LPCTSTR chinese) {
  return PromptFor(lorv::kSteelInputTable, chinese);
}

}  // namespace CStInf

namespace CObjClassInf {

LPCTSTR GetInf(ErrPompt prompt) {
  return PromptAt(lorv::kObjectClassTable, static_cast<int>(prompt));
}
LPCTSTR GetInf(LPCTSTR chinese) {
  return PromptFor(lorv::kObjectClassTable, chinese);
}

}  // namespace CObjClassInf

namespace PublicInf {

LPCTSTR GetPubInf(PublicPropt prompt) {
  return PromptAt(lorv::kCommandLineTable, static_cast<int>(prompt));
}
LPCTSTR GetPubInf(LPCTSTR chinese) {
  return PromptFor(lorv::kCommandLineTable, chinese);
}

LPCTSTR GetErrInf(ErrorPropt prompt) {
  return PromptAt(lorv::kFailureTable, static_cast<int>(prompt));
}
LPCTSTR GetErrInf(LPCTSTR chinese) {
  return PromptFor(lorv::kFailureTable, chinese);
}

LPCTSTR GetShapeInf(Shape prompt) {
  return PromptAt(lorv::kShapeTable, static_cast<int>(prompt));
}
LPCTSTR GetShapeInf(LPCTSTR chinese) {
  return PromptFor(lorv::kShapeTable, chinese);
}

LPCTSTR GetPtInf(PointPrompt prompt) {
  return PromptAt(lorv::kPointTable, static_cast<int>(prompt));
}
LPCTSTR GetPtInf(LPCTSTR chinese) {
  return PromptFor(lorv::kPointTable, chinese);
}

}  // namespace PublicInf

namespace TCompDrawInf {

LPCTSTR GetInf(DrawInformation prompt) {
  return PromptAt(lorv::kDrawingTable, static_cast<int>(prompt));
}
LPCTSTR GetInf(LPCTSTR chinese) {
  return PromptFor(lorv::kDrawingTable, chinese);
}

}  // namespace TCompDrawInf

namespace SwicthInfo {

LPCTSTR GetSwitchInf(ShowSwitch prompt) {
  return PromptAt(lorv::kShowSwitchTable, static_cast<int>(prompt));
}
LPCTSTR GetSwitchInf(LPCTSTR chinese) {
  return PromptFor(lorv::kShowSwitchTable, chinese);
}

}  // namespace SwicthInfo
