#include <vector>

#include <corvane/units/CQORUnitConvertor.h>

int main() {
    const CQORUnitConvertor convertor;

    // The CAD system measures in metres, the rule's limit is in mils.
    const double wall =
        convertor.ConversionFromMeters(0.00127, QORLengthUnit_Mil, QORUnitKind_Length);

    const double pounds =
        convertor.ConversionFromOneUnitToAnotherForMass(1500, QORMassUnit_Gram, QORMassUnit_Pound);

    // The factors have 13 or 14 digits: compare with a tolerance, never for equality.
    const double inch = convertor.ConversionFromOneUnitToAnother(
        25.4, QORUnitKind_Length, QORLengthUnit_Millimetre, QORLengthUnit_Inch);

    // The points of a mesh, x, y and z in turn, all at once and in place.
    std::vector<double> points = {0.01, 0.02, 0.005, 0.01, 0.03, 0.005};
    convertor.ConvertValues(points, QORUnitKind_Length, QORLengthUnit_Metre,
                            QORLengthUnit_Millimetre);
    const auto close = [](double a, double b) { return a - b < 1e-9 && b - a < 1e-9; };

    const bool right = close(wall, 50) && close(pounds, 3.3069337140569376) && inch != 1 &&
                       close(inch, 1) && points[1] == 20;
    return right ? 0 : 1;
}
