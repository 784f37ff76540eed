#pragma once

// The functions of numbers that formulas call, the same to the last bit on every system and processor.
//
// The C library's own differ between systems, and on one system between processors; these are made of
// additions, multiplications, divisions and square roots of doubles, which the standard of their arithmetic
// defines to the last bit. What each gives is the double nearest to the exact value, ties to the even one: a
// quick way with a known error answers whenever that error cannot change the rounding, and one of twice the
// digits answers the rest (about one call in a hundred). That one errs by at most some 2^-90 of the value,
// so an answer other than the nearest double would need an argument whose exact value is that close to the
// middle of two.
//
// Edges: NaN gives itself; outside a function's domain the result is the NaN that the processor makes.
// Infinities give the limit, where there is one. No state is kept and no floating-point flag is read: any
// thread, in the default rounding direction.
//
//   Power(10, -2) == 0.01       Sine(1e22) == -0.8522008497671888
namespace lorv::arithmetic {

double Sine(double x);
double Cosine(double x);
double Tangent(double x);
double ArcSine(double x);
double ArcCosine(double x);
double ArcTangent(double x);
double Exponential(double x);
double Logarithm(double x);  // natural; -infinity for 0
double Power(double base, double exponent);

}  // namespace lorv::arithmetic
