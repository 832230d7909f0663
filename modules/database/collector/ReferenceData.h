#pragma once

#include <corvane/database/IReferenceData.h>

#include "Lookups.h"

namespace collector {

/// The lookups of the collector that holds this object.
class ReferenceData final : public qor_db::IReferenceData {
public:
    ReferenceData() = default;
    ReferenceData(const ReferenceData&) = delete;
    ReferenceData& operator=(const ReferenceData&) = delete;
    virtual ~ReferenceData() = default;  // after the slots of the interface

    /// From now on lookups read `database`; with null they give `reason`.
    void connect(qor_db::IDatabaseConnection* database, qor_db::Status reason) noexcept;
    void disconnect() noexcept { connect(nullptr, Lookups::notOpen()); }

    qor_db::Outcome<std::vector<qor_db::DrillSize>> drillSizes(bool preferredOnly) override;
    qor_db::Outcome<qor_db::DrillSize> nearestDrill(double diameter, bool preferredOnly) override;
    qor_db::Outcome<qor_db::ThreadHole> thread(std::u16string_view designation) override;
    qor_db::Outcome<std::vector<qor_db::ThreadHole>> threads(double nominal) override;
    qor_db::Outcome<qor_db::ClearanceHole> clearanceHole(double nominal,
                                                         qor_db::ClearanceFit fit) override;
    qor_db::Outcome<std::vector<qor_db::Material>> materials() override;
    qor_db::Outcome<qor_db::Material> material(std::u16string_view name) override;
    qor_db::Outcome<qor_db::BendRadius> bendRadius(std::u16string_view material, double thickness,
                                                   qor_db::BendDirection direction) override;
    qor_db::Outcome<qor_db::WallThickness> minimumWall(std::u16string_view process,
                                                       std::u16string_view material) override;
    qor_db::Outcome<std::vector<qor_db::WallThickness>> minimumWalls() override;

private:
    Lookups lookups_;
};

}  // namespace collector
