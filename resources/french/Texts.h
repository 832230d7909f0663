#pragma once

#include <corvane/app/StringResources.h>
#include <corvane/app/StringTable.h>

namespace corvane::resources {

using namespace corvane::resource;

inline constexpr StringTableEntry kMessages[] = {
    {kScriptCaption, u"Règle par script"},
    {kScriptFailed, u"Le script de la règle «\u00A0%s\u00A0» a échoué."},
    {kScriptMissing,
     u"La règle «\u00A0%s\u00A0» ne peut pas être vérifiée\u00A0: le fichier de script de "
     u"«\u00A0%s\u00A0» est introuvable."},
    {kErrorSource, u"Source"},
    {kErrorLine, u"Ligne"},
    {kErrorNumber, u"Numéro d’erreur"},
    {kErrorCode, u"Code d’état"},
    {kNewRuleName, u"Nouvelle règle"},
    {kNewRuleDescription, u"Règle définie par l’utilisateur"},
    {kIllegalParameter, u"Un paramètre est d’un type non valide."},
};

inline constexpr StringTableEntry kCategories[] = {
    {69, u"Assemblage"},
    {72, u"Fabrication additive"},
    {3012, u"Tôlerie"},
    {3013, u"Général"},
    {3014, u"Fraisage"},
    {3015, u"Tournage"},
    {3016, u"Perçage"},
    {3017, u"Moulage par injection"},
    {3018, u"Autre"},
    {3021, u"Mise en plan"},
    {3032, u"Forgeage"},
    {3033, u"Soudage"},
    {3038, u"Fonderie"},
    {3046, u"Extrusion"},
    {3047, u"Cintrage de tubes"},
    {3048, u"Traitement de surface"},
    {3049, u"Traitement thermique"},
    {3050, u"Tolérances"},
    {3051, u"Matériau"},
};

}  // namespace corvane::resources
