#include "TEXPRESSCAL/language/function_data.h"

// The functions of formulas: number, name, help text. The numbers are the kinds of their nodes, and callers
// see them in the list of functions, so a new function takes a new number. The sorted table and the parser's
// hash are both made from these rows.

namespace lorv {

// clang-format off
const std::array<CDtaFunction, 28> kFunctionData = {{
    {150, _T("SIN"), _T("正弦函数(弧度参数),如:sin(30/180*PI)表示sin30度")},
    {151, _T("COS"), _T("余弦函数(弧度参数)")},
    {152, _T("EXP"), _T("指数函数,如:EXP(1)=2.71828")},
    {153, _T("SQRT"), _T("平方根函数")},
    {154, _T("LOG"), _T("对数函数")},
    {155, _T("TG"), _T("正切函数(弧度参数)")},
    {156, _T("CTG"), _T("余切函数(弧度参数)")},
    {157, _T("ASIN"), _T("反正弦函数(返回弧度)")},
    {158, _T("ACOS"), _T("反余弦函数(返回弧度)")},
    {159, _T("ATG"), _T("反正切函数(返回弧度)")},
    {164, _T("CEIL"), _T("向上取整")},
    {161, _T("FLOOR"), _T("向下取整")},
    {162, _T("MAX"), _T("取大值")},
    {163, _T("MIN"), _T("取小值")},
    {165, _T("ROUND"), _T("四舍五入")},
    {166, _T("IIF"), _T("双if条件语句,如:iif(X=1,1,0),如果X=1,则返回值为1,否则为0")},
    {167, _T("LEN"), _T("求字符长度")},
    {168, _T("INT"), _T("向下取整")},
    {169, _T("ABS"), _T("取绝对值")},
    {170, _T("DTOR"), _T("将角度转换为弧度")},
    {171, _T("RTOD"), _T("将弧度转换为度")},
    {172, _T("TAN"), _T("正切函数(弧度参数)")},
    {173, _T("ATAN"), _T("反正切函数(返回弧度)")},
    {174, _T("SINA"), _T("正弦函数(角度参数)")},
    {175, _T("COSA"), _T("余弦函数(角度参数)")},
    {176, _T("TANA"), _T("正切函数(角度参数)")},
    {177, _T("CTGA"), _T("余切函数(角度参数)")},
    {178, _T("FIND"), _T("字符串查找,找到第二字符串的位置,为0是没有找到,如:find(CLMC,'砖')>0,如果CLMC中包含有‘砖’,则返回'真',否则返回'假'")},
}};
// clang-format on

}  // namespace lorv
