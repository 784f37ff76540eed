#include "TEXPRESSCAL/diagnose/diagnose_text.h"

#include <algorithm>
#include <array>

// The texts of faults in both languages, and the plain signs for those that a Chinese input method types.
// Tables alone: a fault's text and its English are one row, so neither can be forgotten. "%s" is the stretch
// of the formula that the fault names.

namespace lorv {
namespace {

using enum FormulaFault;

// clang-format off
constexpr std::array kFaultTexts = {
    FaultText{kNone, _T(""), _T("")},
    FaultText{kTooLong, _T("公式太长,超出部分将被截断"), _T("the formula is too long, the rest would be cut off")},
    FaultText{kUnfinished, _T("公式没有写完,这里缺少数值"), _T("the formula ends where a value is expected")},
    FaultText{kNoOperand, _T("这里缺少数值,不能是“%s”"), _T("a value is expected here, not '%s'")},
    FaultText{kNoOperator, _T("“%s”之前缺少运算符"), _T("an operator is missing before '%s'")},
    FaultText{kStrayCharacter, _T("公式中不能使用“%s”"), _T("'%s' does not belong in a formula")},
    FaultText{kFullWidth, _T("“%s”是全角符号,请改用半角"), _T("'%s' is a full-width sign, type the plain one")},
    FaultText{kDecimalComma, _T("小数点应写“.”,不能写逗号"), _T("the decimal point is '.', not a comma")},
    FaultText{kLeadingPoint, _T("数字不能以小数点开头,请在前面加0"), _T("a number cannot begin with its point, put a 0 before it")},
    FaultText{kExtraBracket, _T("右括号多余"), _T("this closing bracket has no opening one")},
    FaultText{kOpenBracket, _T("“%s”没有配对的右括号"), _T("'%s' is never closed")},
    FaultText{kOpenText, _T("引号没有配对"), _T("the quote is never closed")},
    FaultText{kBlankBehindBar, _T("竖线之后不能有空格"), _T("no blank may stand behind a closing bar")},
    FaultText{kNoArguments, _T("函数“%s”之后缺少括号"), _T("the function '%s' needs its brackets")},
    FaultText{kArgumentCount, _T("函数“%s”的参数个数不对"), _T("'%s' has the wrong number of arguments")},
    FaultText{kUnknownName, _T("变量“%s”没有定义"), _T("the name '%s' is not known")},
    FaultText{kLongName, _T("变量名“%s”超过20个字符,不能有数值"), _T("the name '%s' has more than 20 characters and can have no value")},
    FaultText{kTooDeep, _T("括号嵌套太深"), _T("the brackets are nested too deeply")},
    FaultText{kDivisionByZero, _T("除数为零:“%s”"), _T("division by zero: '%s' is 0")},
    FaultText{kOutsideDomain, _T("“%s”的参数超出定义域"), _T("the argument of '%s' is outside its domain")},
    FaultText{kMissingArgument, _T("“%s”缺少参数"), _T("'%s' lacks its argument")},
    FaultText{kMalformedArguments, _T("“%s”的参数不合法"), _T("the arguments of '%s' are not valid")},
    FaultText{kSurplusArgument, _T("函数不使用多余的参数“%s”"), _T("the function takes no notice of '%s'")},
    FaultText{kSecondPoint, _T("“%s”有两个小数点,第二个小数点之后的部分不计"), _T("'%s' has a second point: what is behind it does not count")},
    FaultText{kLengthIsZero, _T("“%s”对任何文字都得0"), _T("'%s' is 0 for every text")},
    FaultText{kTextResult, _T("结果是文字,按0计"), _T("the result is a text, which counts as 0")},
    FaultText{kTextAsNumber, _T("文字“%s”在这里按0计"), _T("the text %s counts as 0 here")},
    FaultText{kBeyond32Bits, _T("“%s”的数值过大,无法取整,结果成为-2147483648"), _T("the number in '%s' is too large to be rounded or cut: it became -2147483648")},
    FaultText{kNumberSearched, _T("“%s”里有数字,FIND只查找文字,总得0"), _T("'%s' has a number where FIND takes texts only, and is always 0")},
    FaultText{kDroppedFactor, _T("“%s”在函数或PI之前不起作用,请在中间写*"), _T("'%s' in front of a function or PI does not count, write a * behind it")},
    FaultText{kDroppedOperand, _T("“%s”只否定后面的值,前面的值不计"), _T("'%s' negates what is behind it: the value in front of it does not count")},
    FaultText{kMixedJoins, _T("“%s”与前面的“或”优先级相同,从左到右计算,请加括号"), _T("'%s' binds no tighter than the OR in front of it: put brackets around what belongs together")},
    FaultText{kComparedTruth, _T("“%s”比较的是前一个比较的结果(1或0),请用&&连接两个比较"), _T("'%s' compares the 1 or 0 of the comparison in front of it: join two comparisons by &&")},
    FaultText{kNoNumber, _T("“%s”不是有效数值或太大,而结果看不出来"), _T("'%s' is no number, or too large for one, and the result would hide it")},
};

struct SignPair {
  TCHAR typed;
  LPCTSTR plain;
};

// What an East Asian input method types beside the full-width forms of the ASCII signs, which follow a rule.
constexpr std::array kSigns = {
    SignPair{0x3000, _T(" ")},  SignPair{0x3001, _T(",")},  SignPair{0x3002, _T(".")},
    SignPair{0x2018, _T("'")},  SignPair{0x2019, _T("'")},  SignPair{0x201C, _T("'")},
    SignPair{0x201D, _T("'")},  SignPair{0x00D7, _T("*")},  SignPair{0x00F7, _T("/")},
    SignPair{0x2264, _T("<=")}, SignPair{0x2265, _T(">=")}, SignPair{0x2260, _T("<>")},
    SignPair{0x2212, _T("-")},  SignPair{0x2014, _T("-")},  SignPair{0x2013, _T("-")},
    SignPair{0x3010, _T("(")},  SignPair{0x3011, _T(")")},  SignPair{0x00A0, _T(" ")},
};

constexpr TCHAR kFirstFullWidth = 0xFF01;
constexpr TCHAR kLastFullWidth = 0xFF5E;
constexpr LPCTSTR kAsciiSigns = _T("!\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~");
// clang-format on

}  // namespace

// Searched in order: a person waits for one text, and the list is read more easily than an index.
const FaultText& TextOfFault(FormulaFault fault) {
  const auto found = std::find_if(kFaultTexts.begin(), kFaultTexts.end(),
                                  [fault](const FaultText& text) { return text.fault == fault; });
  return found == kFaultTexts.end() ? kFaultTexts.front() : *found;
}

TextView PlainSign(TCHAR c) {
  if (c >= kFirstFullWidth && c <= kLastFullWidth) return {kAsciiSigns + (c - kFirstFullWidth), 1};
  const auto found =
      std::find_if(kSigns.begin(), kSigns.end(), [c](const SignPair& sign) { return sign.typed == c; });
  return found == kSigns.end() ? TextView() : TextView(found->plain);
}

}  // namespace lorv
