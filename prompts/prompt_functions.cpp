#include "prompts/CObjClassInf.h"
#include "prompts/CStInf.h"
#include "prompts/PublicInf.h"
#include "prompts/SwicthInfo.h"
#include "prompts/TCompDrawInf.h"
#include "prompts/prompt_lookup.h"

// The public look-ups, all of them by position and by Chinese text: what each one adds is the table.
#define LORV_PROMPT_LOOKUP(name, Position, table)                          \
  LPCTSTR name(Position prompt) {                                          \
    return lorv::PromptAt(lorv::table, static_cast<std::int64_t>(prompt)); \
  }                                                                        \
  LPCTSTR name(LPCTSTR chinese) {                                          \
    return lorv::PromptFor(lorv::table, chinese);                          \
  }

namespace CStInf {
LORV_PROMPT_LOOKUP(GetErrInf, ErrPompt, kSteelInputTable)
}

namespace CObjClassInf {
LORV_PROMPT_LOOKUP(GetInf, ErrPompt, kObjectClassTable)
}

namespace PublicInf {
LORV_PROMPT_LOOKUP(GetPubInf, PublicPropt, kCommandLineTable)
LORV_PROMPT_LOOKUP(GetErrInf, ErrorPropt, kFailureTable)
LORV_PROMPT_LOOKUP(GetShapeInf, Shape, kShapeTable)
LORV_PROMPT_LOOKUP(GetPtInf, PointPrompt, kPointTable)
}  // namespace PublicInf

namespace TCompDrawInf {
LORV_PROMPT_LOOKUP(GetInf, DrawInformation, kDrawingTable)
}

namespace SwicthInfo {
LORV_PROMPT_LOOKUP(GetSwitchInf, ShowSwitch, kShowSwitchTable)
}
