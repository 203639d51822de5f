#include "host/drawing/colour.h"

#include <cmath>

namespace wainscot {
namespace {

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(Colour const& colour) {
    return 0.2126 * linear(colour.red()) + 0.7152 * linear(colour.green()) + 0.0722 * linear(colour.blue());
}

} // namespace

double contrastRatio(Colour const& a, Colour const& b) {
    double const la = luminance(a) + 0.05;
    double const lb = luminance(b) + 0.05;
    return la > lb ? la / lb : lb / la;
}

} // namespace wainscot
