#pragma once

#include "language/Catalogue.h"

namespace language {

/// Texts with a number that decides their form.
inline constexpr CountedTranslation kCountedTexts[] = {
    {"{0} rule: ", "{0} rules: ", "{0} règle\u00A0: ", "{0} règles\u00A0: ", "ルール {0} 件: ",
     "규칙 {0}개: "},
    {"{0} passed", "{0} passed", "{0} conforme", "{0} conformes", "合格 {0}", "합격 {0}"},
    {"{0} failed", "{0} failed", "{0} non conforme", "{0} non conformes", "不合格 {0}",
     "불합격 {0}"},
    {"{0} waived", "{0} waived", "{0} sous dérogation", "{0} sous dérogation", "免除 {0}",
     "면제 {0}"},
    {"{0} error", "{0} errors", "{0} erreur", "{0} erreurs", "エラー {0}", "오류 {0}"},
    {"{0} warning", "{0} warnings", "{0} avertissement", "{0} avertissements", "警告 {0}",
     "경고 {0}"},
    {"{0} part", "{0} parts", "{0} pièce", "{0} pièces", "部品 {0} 個", "부품 {0}개"},
    {"{0} row", "{0} rows", "{0} ligne", "{0} lignes", "{0} 行", "{0}행"},
    {"the first {0} row; --limit takes more", "the first {0} rows; --limit takes more",
     "la première ligne\u00A0; --limit en prend plus que {0}",
     "les {0} premières lignes\u00A0; --limit en prend plus", "最初の {0} 行。--limit で増やせます",
     "처음 {0}행. --limit로 늘릴 수 있습니다"},
    {"{1}, {0} rule", "{1}, {0} rules", "{1}, {0} règle", "{1}, {0} règles", "{1}、ルール {0} 件",
     "{1}, 규칙 {0}개"},
    {"{0} note", "{0} notes", "{0} remarque", "{0} remarques", "注意 {0} 件", "참고 {0}건"},
    {"{0} fault", "{0} faults", "{0} défaut", "{0} défauts", "問題 {0} 件", "문제 {0}건"},
    {"{1} has operator 1 and {0} value, neither pairs nor triples",
     "{1} has operator 1 and {0} values, neither pairs nor triples",
     "{1} a l’opérateur 1 et {0} valeur, ni paires ni triplets",
     "{1} a l’opérateur 1 et {0} valeurs, ni paires ni triplets",
     "{1} は演算子 1 で値が {0} 個あり、2 個組にも 3 個組にもなりません",
     "{1}은(는) 연산자 1에 값이 {0}개라 두 개씩도 세 개씩도 묶이지 않습니다"},
    {"{1}: {0} of its parts is missing", "{1}: {0} of its parts are missing",
     "{1}\u00A0: il manque {0} de ses pièces", "{1}\u00A0: il manque {0} de ses pièces",
     "{1}: 部品が {0} 個足りません", "{1}: 부품 {0}개가 빠졌습니다"},
};

}  // namespace language
