#include "tools/lorv/describe/help_table.h"

#include <algorithm>
#include <iterator>

// The Chinese text of the help. It stands in one table and not beside the English of each verb, since a
// translator reads it as a whole; commands in it are those of the English text, which a test compares.

namespace lorv::tool {
namespace {

struct ChineseHelp {
  std::string_view name;
  std::string_view text;
};

// clang-format off
constexpr ChineseHelp kTexts[] = {
    {"about", R"help(lorv:在命令行上计算工程量公式。

公式就是造价人员输入的内容:数字、名称、+ - * / ^、括号、比较和函数,名称可用中文或英文。
`lorv work`按规则计算整张构件表。
)help"},
    {"examples", R"help(示例:
  lorv calc "L*B*H" L=3.6 B=0.24 H=2.8       得出数值
  lorv calc "墙长*墙高-洞口" 墙长=6 墙高=3 洞口=2.1
  lorv work house.csv --rules house-rules.csv --out quantities.csv

`lorv VERB --help`给出各命令的说明;只输入`lorv`就是能保存名称的计算器。输入输出都是UTF-8文字。

退出码:0 完成,1 公式或结果有错,2 参数或文件不能使用。)help"},
    {"calc", R"help(名称由各种文字的字母、数字和_组成,不分大小写。没有值的名称是错误。数值按全部小数位计算;--suite-values
按套件的方式计算:取三位小数,接近三分之一的按三分之一,结果因此不同时会说明。文字放在单引号里。公式写作-时,
从标准输入读取公式,每行一个。

示例:
  lorv calc "L*B*H" L=3.6 B=0.24 H=2.8
  lorv calc --explain "2*(墙长+B)*IIF(H>3,1.2,1)" 墙长=6 B=0.24 H=3.3
  lorv calc "FIND(CLMC,'砖')>0" "CLMC='砖墙'"
  lorv calc -2^2                       负号先于^:得4
  lorv calc - L=2 <formulas.txt

退出码 0:给出了数值。1:公式有错,并标出位置;或者结果不是看上去的意思。2:参数有错。)help"},
    {"check", R"help(检查公式能否计算:名称取几组数值,全都失败才算有错。给出NAMES时只能用这些名称,不给则都可以。

示例:
  lorv check "2*(L+B)*H"
  lorv check "墙长*墙高" 墙长 墙高 墙厚
  lorv check "A/(A-A)"          除数总是0

  lorv check - <formulas.txt      只列出有问题的

可疑之处(函数用不到的参数、3.4.5、该是数字的地方是文字)作为警告列出。
退出码 0:可以计算。1:不能,并标出原因。)help"},
    {"vars", R"help(按公式里的次序列出需要值的名称,每个一次。

示例:
  lorv vars "2*(L+B)*H-门洞"
  lorv vars --all "A+B*A"       连同重复的:A, B, A)help"},
    {"functions", R"help(说明文字与套件给用户看的相同。

示例:
  lorv functions
  lorv functions iif
  lorv functions --json)help"},
    {"rewrite", R"help(操作,用下列名称或库函数的名称:
  text      ReplaceStr            OLD=NEW:文字,不论在何处
  value     ReplExprWithValue     NAME=VALUE:把名称换成值的文字,只在名称的边界处
  number    ReplExprWithOneValue  NAME=NUMBER:像数值代入公式那样:三位小数,三分之一写作1/3
  formula   ReplaceExprWithExpr   NAME=FORMULA ...:把名称换成公式,一遍完成
  split     SplitMidBracketKey    去掉名称后的[...],并列出各名称和括号里的内容
  pairs     StrValueToMap         读取NAME:NUMBER;...并按次序写出,即MapValueToStr
每个操作与库函数完全一致。除formula的名称外区分大小写。

示例:
  lorv rewrite formula "2*a" a=b+c --brackets      2*(b+c)
  lorv rewrite formula "2a" a=3 --multiply         2*3
  lorv rewrite number "2a" a=0.333                 2*1/3
  lorv rewrite split "2*abc[1]"                    2*abc,以及abc和1)help"},
    {"simplify", R"help(更短的公式,名称不论取什么值,结果和错误都完全相同,直到最后一位。
加--suite:用套件自己的规则,它们只看字符,不懂语法,可能改变公式的结果("sin(a*0)"变成"s0)");结果是小写的。
规则有:zero、max、min、iif。

示例:
  lorv simplify "1*A+IIF(2>1,B,C/0)"                     A+(B)
  lorv simplify --any-zero "a*0+b"                       b
  lorv simplify --suite "max(1,2)+0*c" --rules max       2+0*c
  lorv simplify --suite "max(墙高,2)" --value 墙高=3      墙高

退出码 1:套件的规则遇到除以零,或不能化简的调用。)help"},
    {"clean", R"help(操作,用短名称或库函数的名称:
  numbers  OptimizeNumExpr     去掉符号或名称之后的零
  terms    OptimizeExpr        去掉后面没有数字的零,连同它的符号和因子,再整理符号
  signs    MoveConnSymbol      整理重复的符号和空括号
  params   PrepareParamsValue  把NAME:FORMULA;...里的每个公式算成数字
用于拼接而成的文字,不作语法分析:用terms时"10+a"变成"1+a"。

示例:
  lorv clean numbers "a+0+b"                     a+b
  lorv clean terms "a*0+b"                       a+b
  lorv clean signs "a*+b"                        a+b
  lorv clean params "a:1+1;b:H*2" --values H:3    a:2;b:6)help"},
    {"work", R"help(构件表每行一个构件:类别、名称、楼层和尺寸。规则表每行一个工程量:对哪些类别,名称、单位和公式。两者都是
电子表格程序或文本编辑器写出的表格(UTF-8、GBK或UTF-16的CSV,或.xlsx工作簿的第一个工作表),标题用中文或英文。
说明见docs/formats/。

错误的公式或缺少的值每条规则报告一次,并标出位置,其余照算;退出码为1。可疑或略去的内容(没有规则的类别、从未
用到的规则、文件里没有的列、单位)也会说明。

示例:
  lorv work house.csv --rules rules.csv
  lorv work house.csv --rules rules.csv --out quantities.csv --bill bill.csv --mark
  lorv work house.csv -r rules.csv --by storey,class --where "class=墙 && 宽>0.2"
  lorv work house.xlsx -r rules.xlsx --bill bill.xlsx
  lorv work house.csv -r rules.csv --explain --out quantities.csv
  lorv work model.csv --rules rules.csv --compare --tolerance 0.5
  cat house.csv | lorv work - --rules rules.csv --json)help"},
    {"sheet", R"help(不给--sheet和--out时列出工作簿的各工作表:序号、名称、行数x列数。单元格按工作表显示的样子写出。表格做成的
工作簿里数字是数值,007这样的文字保持原样。-表示标准输入或标准输出;读取和写出可以是同一个文件,因为最后才写出。

示例:
  lorv sheet bill.xlsx
  lorv sheet bill.xlsx --sheet 2 --out walls.csv
  lorv sheet walls.csv --out walls.xlsx --sheet 墙
  lorv sheet bill.xlsx -s 1 --json

退出码 2:文件不能读写,或没有这个工作表。)help"},
    {"match", R"help(按与输入内容相同的多少排列文字,每行一个:最相近的在前,前面是得分。毫无相同的不列出。文字来自FILE,
不给时来自标准输入。

示例:
  lorv match KL1 --file names.txt
  printf "KL1\n框架梁\n" | lorv match 框架 --top 3

退出码 1:没有任何相同。)help"},
    {"name", R"help(操作:
  check  检查TEXT能否作名称:不含' \ " %,不加--blanks时也不含空格
  clean  从TEXT里去掉\ ' " %和/(有空格时保留空格,并去掉所有')
  free   以TEXT开头加数字的第一个可用名称,NAMES是已占用的

示例:
  lorv name check "KL 1"                 包含空格
  lorv name clean "KL/1"                 KL1
  lorv name free KL KL KL1 KL2            KL3

退出码 1:check发现问题;说明是套件自己的文字。)help"},
    {"image", R"help(按内容而不是按名称说明GIF、PNG、JPEG、BMP、ICO或TIFF的种类、大小和帧数;有几帧时列出每帧的大小和延迟。TIFF的一页
是一帧,ICO取其中最大的图。给出--out时写出一帧,即它之前各帧画完后的样子。

示例:
  lorv image beam.gif
  lorv image beam.gif --json
  lorv image beam.gif --frame 2 --out third.png

退出码 2:文件不是这样的图像、已损坏、所需内存超过图像的限度,或没有这一帧。)help"},
    {"prompts", R"help(不给TABLE:列出各表。给出TABLE:列出各行的行号、中文和英文,以制表符分隔。给出ITEM(行号或中文):列出该项的
中文,加--english列出英文。

示例:
  lorv prompts
  lorv prompts shapes
  lorv prompts classes 墙 --english       Wall
  lorv prompts classes 106               砼结构

文字里的换行和制表符写作\n和\t。退出码 1:表里没有这个文字。)help"},
    {"log", R"help(把LINES(不给时为标准输入的各行)写入FOLDER里的FILE,用套件的窄字符编码。FOLDER只缺最后一级时会建立;
已有的文件会被替换。

示例:
  lorv log checks today.txt "KL1: no section" "Z3: no height"
  lorv check "1+" 2>&1 | lorv log checks today.txt --open

退出码 2:不能建立文件夹、不能写入文件,或没有任何行。)help"},
    {"pack", R"help(不能压缩的逐一说明,其余照做;退出码为1。

示例:
  lorv pack project.zip drawings plan.csv
  lorv pack --force project.zip drawings)help"},
    {"unpack", R"help(损坏、加密或不能写入的条目逐一说明,其余照做;退出码为1。

示例:
  lorv unpack project.zip
  lorv unpack project.zip --to project --force)help"},
    {"list", R"help(列出每个条目的大小、压缩后的大小、写入时间和名称。名称里的控制字符显示为"\x1B"。

示例:
  lorv list project.zip
  lorv list --json project.zip)help"},
    {"test", R"help(解压每个条目并核对校验和,不写出文件。退出码 1:有条目损坏,逐一列出。

示例:
  lorv test project.zip)help"},
    {"squeeze", R"help(套件自己的单个文件形式;`lorv pack`压缩得更小,而且各种程序都能读。

示例:
  lorv squeeze plan.csv
  lorv squeeze plan.csv --out plan.lz)help"},
    {"expand", R"help(示例:
  lorv expand plan.csv.lzari
  lorv expand plan.lz --out plan.csv)help"},
    {"completion", R"help(示例:
  lorv completion bash >~/.local/share/bash-completion/completions/lorv
  lorv completion zsh >~/.zfunc/_lorv
  lorv completion fish >~/.config/fish/completions/lorv.fish)help"},
    {"manual", R"help(手册页包含每个命令的--help文字。

示例:
  lorv manual >lorv.1 && man ./lorv.1
  lorv manual --json                   同样的内容,供程序读取)help"},
};
// clang-format on

}  // namespace

std::string_view ChineseHelpOf(std::string_view name) {
  const auto* const found = std::find_if(std::begin(kTexts), std::end(kTexts),
                                         [=](const ChineseHelp& help) { return help.name == name; });
  return found == std::end(kTexts) ? std::string_view() : found->text;
}

}  // namespace lorv::tool
