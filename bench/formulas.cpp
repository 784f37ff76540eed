#include "bench/formulas.h"

#include <cctype>
#include <map>

// The formulas that both engines of the comparison evaluate, and the values of their names.

namespace lorv::bench {
namespace {

// Metres, square metres, pieces.
const std::map<std::string, double> kValues = {
    {"L", 5.4},  {"B", 0.25},  {"H", 3.15},     {"T", 0.24},    {"A", 1.89},    {"C", 0.025}, {"D", 0.02},
    {"S", 0.15}, {"N", 4},     {"W", 1.2},      {"X1", 12.35},  {"X2", 18.75},  {"Y1", 4.05}, {"Y2", 9.6},
    {"LN", 6.6}, {"LA", 0.85}, {"BH", 0.6},     {"HB", 0.12},   {"KJ", 7.2},    {"ZH", 0.45}, {"CW", 1.8},
    {"CH", 1.5}, {"MW", 0.9},  {"MH", 2.1},     {"CN", 3},      {"MN", 2},      {"QH", 0.2},  {"LS", 0.37},
    {"DJ", 22},  {"GJ", 8},    {"ALPHA", 0.52}, {"BETA", 1.05}, {"SLOPE", 1.1}, {"ROWS", 12},
};

// Only what both engines understand alike: no texts, no chained comparisons, no powers.
const char* const kTexts[][2] = {
    {"T1", "L*B*H"},
    {"T2", "2*(B+H)*L"},
    {"T3", "L*B*H-A*T"},
    {"M1", "IIF(H>3.6,L*B*H*1.2,L*B*H)-A*T"},
    {"M2", "2*(B+H)*(L-0.05)*1.1+MAX(B,H)*2*T"},
    {"M3", "ROUND((L-2*C)/S+1)*(B-2*C+2*11.9*D)*0.617"},
    {"M4", "SQRT((X2-X1)*(X2-X1)+(Y2-Y1)*(Y2-Y1))*H*B*1.05"},
    {"M5", "IIF(L>2*C,(L-2*C)*N*W,0)+CEIL(L/S)*D*D*6.17+MAX(A,0.3)*T"},
    {"M6", "MAX(B,MIN(H,T))*L+ABS(B-H)*0.5*(L+2*C)-N*A"},
    {"X1",
     "IIF(LN>6,(LN-2*ZH)*(BH-QH)*B*1.15,(LN-2*ZH)*BH*B)+MAX(KJ-2*ZH,LN)*LS*(BH-HB)-CN*CW*CH*T-MN*MW*MH*T"
     "+2*(LA+ZH)*MIN(BH,HB+0.5)*B+ROUND((KJ-0.1)/"
     "S+1)*(BH-2*C)*D*0.395+SQRT(ABS(X2-X1)*ABS(Y2-Y1))*QH*B-0.5*A*HB"},
    {"X2",
     "(LN*H-CN*CW*CH-MN*MW*MH)*T+IIF((H-BH>2.8)&&(LN>4),(LN-2*ZH)*HB*T*2,(LN-2*ZH)*HB*T)+ROUND(LN/"
     "3.6+0.5)*(H-BH)"
     "*T*QH+CN*(CW+0.5)*0.18*T+MN*(MW+0.5)*0.18*T-MAX(0,ZH*(H-BH)*T-LA*0.06)+SIN(ALPHA)*COS(BETA)*SLOPE*A"
     "+INT(KJ/S)*(2*(B+BH)-8*C+2*11.9*D)*GJ*GJ*0.00617*0.001+ABS(X1-X2)*ABS(Y1-Y2)*0.125*HB"},
    {"X3",
     "IIF(SLOPE>1,KJ*LN*SLOPE*QH,KJ*LN*QH)-N*ZH*ZH*QH+2*(KJ+LN)*LS*(BH-QH)-4*(BH-QH)*B*ZH"
     "+(ROUND((KJ-2*C)/S+1)*(LN+2*35*DJ*0.001)+ROUND((LN-2*C)/S+1)*(KJ+2*35*DJ*0.001))*DJ*DJ*0.00617*0.001"
     "+ROWS*(CEIL((KJ-0.1)/0.2)+CEIL((LN-0.1)/0.2))*(2*(B+BH)-8*C+23.8*GJ*0.001)*GJ*GJ*0.00617*0.001"
     "+MAX(MAX(KJ,LN)/4,LA+ZH)*4*DJ*DJ*0.00617*0.001-MIN(MIN(KJ,LN)/5,LA)*2*D*0.395"
     "+(KJ*H-CN*CW*CH-MN*MW*MH)*T*IIF((H>3)&&(T>0.2),1.05,1)+(LN*H-CN*CW*CH)*T*IIF(H>3.6,1.1,1)"
     "+SQRT((X2-X1)*(X2-X1)+(Y2-Y1)*(Y2-Y1))*(BH+2*HB)*0.5+SIN(ALPHA)*(KJ/2)*COS(BETA)*(LN/2)*SLOPE"
     "+ABS(X2-X1)*HB*W+ABS(Y2-Y1)*HB*W+INT(LN/1.2+0.001)*A*0.05+INT(KJ/1.2+0.001)*A*0.05+FLOOR(L/0.3)*W*QH"
     "-(CN*(CW+CH)*2+MN*(MW+2*MH))*T*0.5"},
};

}  // namespace

std::vector<std::pair<std::string, double>> ValuesFor(const std::string& text) {
  std::map<std::string, double> found;
  // Whole words, so that "L" is not found in "LN"; functions and numbers have no row among the values.
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at;
    while (end < text.size() && std::isalnum(static_cast<unsigned char>(text[end])) != 0) ++end;
    const auto value = kValues.find(text.substr(at, end - at));
    if (value != kValues.end()) found.insert(*value);
    at = end == at ? at + 1 : end;
  }
  return {found.begin(), found.end()};
}

std::vector<Formula> TwelveFormulas() {
  std::vector<Formula> formulas;
  for (const auto& [name, text] : kTexts) formulas.push_back({name, text, ValuesFor(text)});
  return formulas;
}

}  // namespace lorv::bench
