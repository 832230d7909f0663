#pragma once

#include <corvane/database/IReferenceData.h>

#include "Console.h"

// Prints what a look-up gives: a list as a table, one row as fields. Gives the exit status.

int printRows(const qor_db::Outcome<std::vector<qor_db::DrillSize>>& drills, Console& console);
int printRows(const qor_db::Outcome<std::vector<qor_db::ThreadHole>>& threads, Console& console);
int printRows(const qor_db::Outcome<std::vector<qor_db::Material>>& materials, Console& console);
int printRows(const qor_db::Outcome<std::vector<qor_db::WallThickness>>& walls, Console& console);

int printRow(const qor_db::Outcome<qor_db::DrillSize>& drill, Console& console);
int printRow(const qor_db::Outcome<qor_db::ThreadHole>& thread, Console& console);
int printRow(const qor_db::Outcome<qor_db::ClearanceHole>& hole, Console& console);
int printRow(const qor_db::Outcome<qor_db::Material>& material, Console& console);
int printRow(const qor_db::Outcome<qor_db::BendRadius>& bend, Console& console);
int printRow(const qor_db::Outcome<qor_db::WallThickness>& wall, Console& console);
