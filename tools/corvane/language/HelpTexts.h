#pragma once

#include "language/Catalogue.h"

namespace language {

/// The help of the program and of its commands, and what the parser of the command line says.
inline constexpr Translation kHelpTexts[] = {
    {"Checks parts against manufacturing rules.\nRules are in rule files: compiled ones in rule "
     "modules, user-defined ones as scripts.",
     "Vérifie des pièces selon des règles de fabrication.\nLes règles se trouvent dans des "
     "fichiers de règles\u00A0: compilées dans des modules de règles,\ndéfinies par l’utilisateur "
     "sous forme de scripts.",
     "部品を製造ルールでチェックします。\nルールはルールファイルに記述します。コンパイル済みルール"
     "はルールモジュールに、ユーザー定義ルールはスクリプトにあります。",
     "제조 규칙에 따라 부품을 검사합니다.\n규칙은 규칙 파일에 있습니다. 컴파일된 규칙은 규칙 "
     "모듈에, 사용자 정의 규칙은 스크립트에 있습니다."},
    {"Exit status: 0 all is well, 1 something is not, as the command's own help tells,\n2 bad "
     "usage, or a file that cannot be read or written.",
     "Code de retour\u00A0: 0 tout va bien, 1 quelque chose ne va pas, selon l’aide de la "
     "commande,\n2 mauvais usage, ou fichier impossible à lire ou à écrire.",
     "終了ステータス: 0 問題なし、1 問題あり（各コマンドのヘルプを参照）、\n2 "
     "使い方の誤り、または読み書きできないファイルがある。",
     "종료 상태: 0 이상 없음, 1 이상 있음(각 명령의 도움말 참조),\n2 잘못된 사용법 또는 읽거나 쓸 "
     "수 없는 파일."},
    {"Display program version information and exit", "Affiche la version du programme et quitte",
     "プログラムのバージョンを表示して終了します", "프로그램 버전을 표시하고 끝냅니다"},
    {"Print this help message and exit", "Affiche cette aide et quitte",
     "このヘルプを表示して終了します", "이 도움말을 표시하고 끝냅니다"},
    {"Usage", "Utilisation\u00A0", "使い方", "사용법"},
    {"OPTIONS", "OPTIONS", "オプション", "옵션"},
    {"SUBCOMMAND", "COMMANDE", "コマンド", "명령"},
    {"Subcommands", "Commandes\u00A0", "コマンド", "명령"},
    {"Positionals", "Arguments\u00A0", "引数", "인수"},
    {"Options", "Options\u00A0", "オプション", "옵션"},
    {"REQUIRED", "OBLIGATOIRE", "必須", "필수"},
    {"Excludes", "Exclut", "併用不可", "함께 사용 불가"},
    {"Run with {0} for more information.", "Lancez avec {0} pour en savoir plus.",
     "詳しくは {0} を付けて実行してください。", "자세한 내용은 {0} 옵션으로 실행하십시오."},
    {"A subcommand is required", "Une commande est requise", "コマンドを指定してください",
     "명령을 지정해야 합니다"},
    {"{0} is required", "{0} est requis", "{0} を指定してください", "{0}을(를) 지정해야 합니다"},
    {"Could not convert: {0}", "Valeur impossible à convertir\u00A0: {0}",
     "値を変換できません: {0}", "값을 변환할 수 없음: {0}"},
    {"The following argument was not expected: {0}", "Argument inattendu\u00A0: {0}",
     "想定外の引数です: {0}", "예상하지 않은 인수: {0}"},
    {"The following arguments were not expected: {0}", "Arguments inattendus\u00A0: {0}",
     "想定外の引数です: {0}", "예상하지 않은 인수: {0}"},
    {"File does not exist: {0}", "Le fichier n’existe pas\u00A0: {0}",
     "ファイルが存在しません: {0}", "파일이 없음: {0}"},
    {"File is actually a directory: {0}", "C’est un dossier et non un fichier\u00A0: {0}",
     "ファイルではなくフォルダーです: {0}", "파일이 아니라 폴더임: {0}"},
    {"Directory does not exist: {0}", "Le dossier n’existe pas\u00A0: {0}",
     "フォルダーが存在しません: {0}", "폴더가 없음: {0}"},
    {"Directory is actually a file: {0}", "C’est un fichier et non un dossier\u00A0: {0}",
     "フォルダーではなくファイルです: {0}", "폴더가 아니라 파일임: {0}"},
    {"{0} excludes {1}", "{0} exclut {1}", "{0} と {1} は併用できません",
     "{0}은(는) {1}과(와) 함께 쓸 수 없습니다"},
    {"{0} requires {1}", "{0} exige {1}", "{0} には {1} が必要です",
     "{0}에는 {1}이(가) 필요합니다"},
    {"{0} not in {1}", "{0} ne fait pas partie de {1}", "{0} は {1} にありません",
     "{0}이(가) {1}에 없습니다"},
    {"{0}: {1} required {2} missing", "{0}\u00A0: il manque {1} {2}",
     "{0}: {2} が {1} 個足りません", "{0}: {2} {1}개가 빠졌습니다"},
    {"Value {0} not in range {1} to {2}", "La valeur {0} n’est pas comprise entre {1} et {2}",
     "値 {0} が {1} ～ {2} の範囲にありません", "값 {0}이(가) {1}~{2} 범위를 벗어났습니다"},
    {"Expected exactly {0} arguments to {1}, got {2}",
     "{1} attend exactement {0} arguments, {2} reçus",
     "{1} の引数は {0} 個ですが、{2} 個指定されました",
     "{1}의 인수는 {0}개여야 하지만 {2}개가 지정되었습니다"},
    {"Did you mean \"{0}\"?", "Vouliez-vous dire «\u00A0{0}\u00A0»\u00A0?",
     "「{0}」の間違いではありませんか?", "\"{0}\"을(를) 뜻하셨습니까?"},
    {"{0} has brackets in its name", "{0} a des crochets dans son nom",
     "{0} の名前に角かっこがあります", "{0} 이름에 대괄호가 있습니다"},
    {"VALUE FROM TO or --list", "VALUE FROM TO ou --list", "VALUE FROM TO または --list",
     "VALUE FROM TO 또는 --list"},
    {"the memory ran out", "la mémoire est épuisée", "メモリが不足しました", "메모리가 부족합니다"},
    {"the library failed with {0}", "la bibliothèque a échoué avec {0}",
     "ライブラリが {0} で失敗しました", "라이브러리가 {0}(으)로 실패했습니다"},
    {"an unknown error ended the program", "une erreur inconnue a mis fin au programme",
     "不明なエラーでプログラムが終了しました", "알 수 없는 오류로 프로그램이 끝났습니다"},
    {"--scripts takes a temporary folder, and none can be made; let TMPDIR name a folder that can "
     "be "
     "written",
     "--scripts demande un dossier temporaire, et il ne peut pas être créé\u00A0; indiquez dans "
     "TMPDIR un dossier où l’on peut écrire",
     "--scripts には一時フォルダーが必要ですが、作成できません。TMPDIR "
     "に書き込めるフォルダーを指定してください",
     "--scripts에는 임시 폴더가 필요하지만 만들 수 없습니다. TMPDIR에 쓸 수 있는 폴더를 "
     "지정하십시오"},
    {"the results cannot be written", "les résultats ne peuvent pas être écrits",
     "結果を書き込めません", "결과를 쓸 수 없습니다"},
    // Options that several commands have.
    {"Folder of rule modules, sought before lib/rules; may be repeated",
     "Dossier de modules de règles, consulté avant lib/rules\u00A0; peut être répété",
     "ルールモジュールのフォルダー。lib/rules より先に探します。複数指定可",
     "규칙 모듈 폴더. lib/rules보다 먼저 찾으며 여러 번 지정할 수 있습니다"},
    {"Folder of scripts and their index, in place of the one in the settings",
     "Dossier des scripts et de leur index, à la place de celui des réglages",
     "設定のフォルダーの代わりに使う、スクリプトと索引のフォルダー",
     "설정의 폴더 대신 사용할 스크립트와 색인 폴더"},
    {"Folder of machine.reg and user.reg, else CORVANE_REGISTRY_DIR",
     "Dossier de machine.reg et user.reg, sinon CORVANE_REGISTRY_DIR",
     "machine.reg と user.reg のフォルダー。省略時は CORVANE_REGISTRY_DIR",
     "machine.reg와 user.reg 폴더. 생략하면 CORVANE_REGISTRY_DIR"},
    {"Folder above Settings/ConfigModule.ini, else CORVANE_DATA_DIR, the user's or the machine's",
     "Dossier contenant Settings/ConfigModule.ini, sinon CORVANE_DATA_DIR, celui de l’utilisateur "
     "ou de la machine",
     "Settings/ConfigModule.ini の上のフォルダー。省略時は "
     "CORVANE_DATA_DIR、ユーザーまたはマシンのもの",
     "Settings/ConfigModule.ini의 상위 폴더. 생략하면 CORVANE_DATA_DIR, 사용자 또는 시스템의 폴더"},
    {"Names of severities, else Settings/Severities.toml of the data folder",
     "Noms des gravités, sinon Settings/Severities.toml du dossier de données",
     "重大度の名前。省略時はデータフォルダーの Settings/Severities.toml",
     "심각도 이름 파일. 생략하면 데이터 폴더의 Settings/Severities.toml"},
    {"Format of standard output: {0}", "Format de la sortie standard\u00A0: {0}",
     "標準出力の形式: {0}", "표준 출력 형식: {0}"},
    {"Write a file too; may be repeated", "Écrit aussi un fichier\u00A0; peut être répété",
     "ファイルにも書き込みます。複数指定可", "파일로도 씁니다. 여러 번 지정할 수 있습니다"},
    {"Let only rules of that severity or a graver one decide the exit status",
     "Seules les règles de cette gravité ou d’une gravité supérieure décident du code de retour",
     "この重大度以上のルールだけで終了ステータスを決めます",
     "이 심각도 이상의 규칙만 종료 상태를 결정합니다"},
    {"Rule file", "Fichier de règles", "ルールファイル", "규칙 파일"},
    // check and run
    {"Check parts by the rules that ship for a process",
     "Vérifie des pièces selon les règles fournies pour un procédé",
     "付属の工法別ルールで部品をチェックします", "공정별로 제공되는 규칙으로 부품을 검사합니다"},
    {"Exit status: 0 all rules passed or are waived, 1 a rule failed, 2 bad usage or a\nfile that "
     "cannot be read or written, 3 no rule failed but one could not judge.",
     "Code de retour\u00A0: 0 toutes les règles sont respectées ou sous dérogation, 1 une règle "
     "n’est pas\nrespectée, 2 mauvais usage ou fichier impossible à lire ou à écrire, 3 aucune "
     "règle enfreinte,\nmais une règle n’a pas pu juger.",
     "終了ステータス: 0 すべてのルールが合格または免除、1 不合格のルールがある、\n2 "
     "使い方の誤り、または読み書きできないファイルがある、3 "
     "不合格はないが判定できないルールがある。",
     "종료 상태: 0 모든 규칙이 합격 또는 면제, 1 불합격 규칙 있음, 2 잘못된 사용법 또는\n읽거나 쓸 "
     "수 없는 파일, 3 불합격은 없으나 판정하지 못한 규칙 있음."},
    {"Parts to check: files, folders, patterns and @LIST",
     "Pièces à vérifier\u00A0: fichiers, dossiers, motifs et @LIST",
     "チェックする部品: ファイル、フォルダー、パターン、@LIST",
     "검사할 부품: 파일, 폴더, 패턴, @LIST"},
    {"How the part is to be made; may be repeated. See --list",
     "Procédé de fabrication de la pièce\u00A0; peut être répété. Voir --list",
     "部品の工法。複数指定可。--list を参照",
     "부품의 제조 공정. 여러 번 지정할 수 있습니다. --list 참조"},
    {"List the processes that rules ship for",
     "Liste les procédés pour lesquels des règles sont fournies",
     "ルールが付属する工法を一覧表示します", "규칙이 제공되는 공정을 나열합니다"},
    {"Run the rules of rule files and write the results",
     "Exécute les règles de fichiers de règles et écrit les résultats",
     "ルールファイルのルールを実行し、結果を書き出します",
     "규칙 파일의 규칙을 실행하고 결과를 씁니다"},
    {"Rule files; folders, patterns and @LIST too, as for parts",
     "Fichiers de règles\u00A0; aussi dossiers, motifs et @LIST, comme pour les pièces",
     "ルールファイル。部品と同様にフォルダー、パターン、@LIST も可",
     "규칙 파일. 부품과 같이 폴더, 패턴, @LIST도 가능"},
    {"A part to check, else CORVANE_PART: a file, a folder, a pattern such as 'parts/*.stl' or "
     "@LIST; may be repeated",
     "Pièce à vérifier, sinon CORVANE_PART\u00A0: fichier, dossier, motif comme 'parts/*.stl' ou "
     "@LIST\u00A0; peut être répété",
     "チェックする部品。省略時は CORVANE_PART。ファイル、フォルダー、'parts/*.stl' "
     "などのパターン、@LIST。複数指定可",
     "검사할 부품. 생략하면 CORVANE_PART. 파일, 폴더, 'parts/*.stl' 같은 패턴 또는 @LIST. 여러 번 "
     "지정할 수 있습니다"},
    {"The same for all arguments up to the next option",
     "Idem pour tous les arguments jusqu’à l’option suivante",
     "同上。次のオプションまでのすべての引数が対象",
     "위와 같으며 다음 옵션까지의 모든 인수에 적용"},
    {"What the parts are made of", "Matériau des pièces", "部品の材料", "부품의 재료"},
    {"Unit of parts whose files name none, else mm",
     "Unité des pièces dont le fichier n’en indique pas, sinon mm",
     "単位のないファイルの部品の単位。省略時は mm", "파일에 단위가 없는 부품의 단위. 생략하면 mm"},
    {"Check only the I-th of N shares of the parts",
     "Vérifie seulement la I-ième de N portions des pièces",
     "部品を N 分割した I 番目だけをチェックします", "부품을 N으로 나눈 것 중 I번째만 검사합니다"},
    {"Only rules of that name; may be a pattern and repeated",
     "Seulement les règles de ce nom\u00A0; motif possible, peut être répété",
     "この名前のルールのみ。パターンと複数指定可",
     "이 이름의 규칙만. 패턴을 쓰고 여러 번 지정할 수 있습니다"},
    {"Only rules of that category", "Seulement les règles de cette catégorie",
     "このカテゴリのルールのみ", "이 범주의 규칙만"},
    {"Only rules of that severity", "Seulement les règles de cette gravité",
     "この重大度のルールのみ", "이 심각도의 규칙만"},
    {"Findings that are accepted", "Constats acceptés (dérogations)", "受け入れ済みの指摘（免除）",
     "수용된 지적 사항(면제)"},
    {"Results of a former run in JSON: only what is not in them fails",
     "Résultats JSON d’une exécution antérieure\u00A0: seul ce qui n’y figure pas est non conforme",
     "以前の実行の JSON 結果。そこにないものだけを不合格とします",
     "이전 실행의 JSON 결과. 여기에 없는 것만 불합격 처리합니다"},
    {"Run nothing when lint finds something in the rule files",
     "N’exécute rien si lint trouve quelque chose dans les fichiers de règles",
     "lint がルールファイルに問題を見つけたら何も実行しません",
     "lint가 규칙 파일에서 문제를 찾으면 아무것도 실행하지 않습니다"},
    {"Worker processes, else one a core", "Nombre de processus, sinon un par cœur",
     "ワーカープロセス数。省略時はコア数", "작업 프로세스 수. 생략하면 코어당 하나"},
    {"Seconds that a rule may take, else 300", "Durée maximale d’une règle en secondes, sinon 300",
     "1 つのルールの制限時間（秒）。省略時は 300", "규칙 하나의 제한 시간(초). 생략하면 300"},
    {"MB that a worker may take, else its share of four fifths of the machine's",
     "Mémoire maximale d’un processus en Mo, sinon sa part des quatre cinquièmes de celle de la "
     "machine",
     "ワーカーのメモリ上限（MB）。省略時はマシンの 5 分の 4 の等分",
     "작업 프로세스의 메모리 한도(MB). 생략하면 시스템 메모리 5분의 4를 나눈 몫"},
    {"Folder of results: what is unchanged is not run again",
     "Dossier de résultats\u00A0: ce qui n’a pas changé n’est pas réexécuté",
     "結果のフォルダー。変更のないものは再実行しません",
     "결과 폴더. 바뀌지 않은 것은 다시 실행하지 않습니다"},
    {"Run without a user: no message boxes, no progress",
     "Exécution sans utilisateur\u00A0: ni boîtes de message ni progression",
     "無人で実行します。メッセージボックスと進行状況を表示しません",
     "사용자 없이 실행: 메시지 상자와 진행 상황을 표시하지 않습니다"},
    // merge
    {"Join files of results, such as the shares of one run",
     "Réunit des fichiers de résultats, par exemple les portions d’une exécution",
     "分割実行した結果などの結果ファイルをまとめます",
     "나누어 실행한 결과 등 결과 파일을 합칩니다"},
    {"Exit status: as of \"corvane run\" with the same results; 2 also when something\nis missing "
     "or double.",
     "Code de retour\u00A0: comme «\u00A0corvane run\u00A0» avec les mêmes résultats\u00A0; 2 "
     "aussi si quelque chose\nmanque ou figure en double.",
     "終了ステータス: 同じ結果の「corvane run」と同じ。欠落や重複がある場合も 2。",
     "종료 상태: 같은 결과의 \"corvane run\"과 같음. 빠지거나 중복된 것이 있을 때도 2."},
    {"Files of results in JSON; folders, patterns, @LIST",
     "Fichiers de résultats en JSON\u00A0; dossiers, motifs, @LIST",
     "JSON の結果ファイル。フォルダー、パターン、@LIST も可",
     "JSON 결과 파일. 폴더, 패턴, @LIST도 가능"},
    // lint
    {"Look for what rule files say in vain", "Cherche ce que les fichiers de règles disent en vain",
     "ルールファイルの効果のない記述を探します", "규칙 파일에서 효과가 없는 내용을 찾습니다"},
    {"Exit status: 0 nothing was found, 1 something was, 2 bad usage.\nWithout a file, the index "
     "of user-defined rules and the settings are looked at.",
     "Code de retour\u00A0: 0 rien trouvé, 1 quelque chose trouvé, 2 mauvais usage.\nSans fichier, "
     "l’index des règles définies par l’utilisateur et les réglages sont examinés.",
     "終了ステータス: 0 何も見つからない、1 見つかった、2 "
     "使い方の誤り。\nファイルを省略すると、ユーザー定義ルールの索引と設定を調べます。",
     "종료 상태: 0 찾은 것 없음, 1 찾은 것 있음, 2 잘못된 사용법.\n파일이 없으면 사용자 정의 "
     "규칙의 색인과 설정을 살펴봅니다."},
    {"Rule files", "Fichiers de règles", "ルールファイル", "규칙 파일"},
    {"How to print: text, json or sarif", "Format d’affichage\u00A0: text, json ou sarif",
     "出力形式: text、json、sarif", "출력 형식: text, json 또는 sarif"},
    {"Codes, by number or name, that are not looked for", "Codes à ignorer, par numéro ou par nom",
     "探さないコード（番号または名前）", "찾지 않을 코드(번호 또는 이름)"},
    // show, save, convert and diff
    {"Show what a rule file holds, with each rule's definition",
     "Montre le contenu d’un fichier de règles, avec la définition de chaque règle",
     "ルールファイルの内容を各ルールの定義とともに表示します",
     "규칙 파일의 내용을 각 규칙의 정의와 함께 보여줍니다"},
    {"Exit status: 0 every rule is whole, 1 one could not be made or has a problem,\n2 bad usage "
     "or a file that cannot be read.",
     "Code de retour\u00A0: 0 toutes les règles sont complètes, 1 une règle n’a pas pu être créée "
     "ou a un\nproblème, 2 mauvais usage ou fichier illisible.",
     "終了ステータス: 0 すべてのルールが完全、1 作成できない、または問題のあるルールがある、\n2 "
     "使い方の誤り、または読み取れないファイルがある。",
     "종료 상태: 0 모든 규칙이 온전함, 1 만들 수 없거나 문제가 있는 규칙 있음,\n2 잘못된 사용법 "
     "또는 읽을 수 없는 파일."},
    {"Read a rule file and write its rules to another one, with each rule's definition",
     "Lit un fichier de règles et écrit ses règles dans un autre, avec la définition de chaque "
     "règle",
     "ルールファイルを読み、各ルールの定義とともに別のファイルに書き込みます",
     "규칙 파일을 읽고 각 규칙의 정의와 함께 다른 파일에 씁니다"},
    {"Exit status: 0 every rule is whole, 1 one could not be made, so that its element\ngoes over "
     "as it stands, has a problem or loses something, 2 bad usage or a file\nthat cannot be read "
     "or written.",
     "Code de retour\u00A0: 0 toutes les règles sont complètes, 1 une règle n’a pas pu être créée "
     "(son\nélément est repris tel quel), a un problème ou perd quelque chose, 2 mauvais usage ou "
     "fichier\nimpossible à lire ou à écrire.",
     "終了ステータス: 0 すべてのルールが完全、1 "
     "作成できない（要素はそのまま引き継ぐ）、問題がある、\nまたは何かを失うルールがある、2 "
     "使い方の誤り、または読み書きできないファイルがある。",
     "종료 상태: 0 모든 규칙이 온전함, 1 만들 수 없어 요소를 그대로 옮긴 규칙, 문제가 "
     "있거나\n무언가를 잃는 규칙 있음, 2 잘못된 사용법 또는 읽거나 쓸 수 없는 파일."},
    {"File to write; it is replaced as a whole",
     "Fichier à écrire\u00A0; il est remplacé en entier",
     "書き込むファイル。全体が置き換えられます", "쓸 파일. 전체가 바뀝니다"},
    {"Write a rule file or index in its normal form, so that two can be compared",
     "Écrit un fichier de règles ou un index sous sa forme normale, pour pouvoir comparer",
     "ルールファイルまたは索引を、比較できるように正規形で書き出します",
     "규칙 파일이나 색인을 비교할 수 있도록 정규형으로 씁니다"},
    {"Exit status: 0 it is written, 1 --check finds another form, 2 bad usage or a\nfile that "
     "cannot be read or written. Only white space, quotes and the order of\nattributes change.",
     "Code de retour\u00A0: 0 fichier écrit, 1 --check trouve une autre forme, 2 mauvais usage ou "
     "fichier\nimpossible à lire ou à écrire. Seuls changent les blancs, les guillemets et l’ordre "
     "des attributs.",
     "終了ステータス: 0 書き込んだ、1 --check が別の形式を見つけた、2 "
     "使い方の誤り、または読み書き\nできないファイルがある。変わるのは空白、引用符、属性の順序だけ"
     "です。",
     "종료 상태: 0 썼음, 1 --check가 다른 형식을 찾음, 2 잘못된 사용법 또는 읽거나 쓸 수 "
     "없는\n파일. 공백, 따옴표, 속성의 순서만 바뀝니다."},
    {"Rule file or index of user-defined rules",
     "Fichier de règles ou index des règles définies par l’utilisateur",
     "ルールファイルまたはユーザー定義ルールの索引", "규칙 파일 또는 사용자 정의 규칙의 색인"},
    {"File to write, else standard output", "Fichier à écrire, sinon la sortie standard",
     "書き込むファイル。省略時は標準出力", "쓸 파일. 생략하면 표준 출력"},
    {"Replace the file itself", "Remplace le fichier lui-même", "ファイル自体を置き換えます",
     "파일 자체를 바꿉니다"},
    {"Write nothing, tell whether the file has the form",
     "N’écrit rien, indique si le fichier a cette forme",
     "何も書き込まず、正規形かどうかを調べます", "아무것도 쓰지 않고 정규형인지 알려줍니다"},
    {"Compare two rule files, rule by rule and value by value",
     "Compare deux fichiers de règles, règle par règle et valeur par valeur",
     "2 つのルールファイルをルールごと、値ごとに比較します",
     "두 규칙 파일을 규칙별, 값별로 비교합니다"},
    {"Exit status: 0 they say the same, 1 they do not, 2 bad usage or a file that\ncannot be read. "
     "A line tells what is only in the first file (-), only in the\nsecond (+) or other in both. "
     "Order, white space and comments do not count.",
     "Code de retour\u00A0: 0 contenu identique, 1 contenu différent, 2 mauvais usage ou fichier "
     "illisible.\nUne ligne indique ce qui ne figure que dans le premier fichier (-), que dans le "
     "second (+) ou\ndiffère. L’ordre, les blancs et les commentaires ne comptent pas.",
     "終了ステータス: 0 内容が同じ、1 異なる、2 "
     "使い方の誤り、または読み取れないファイルがある。\n各行は最初のファイルだけにあるもの (-)、2 "
     "番目だけにあるもの (+)、異なるものを示します。\n順序、空白、コメントは比較しません。",
     "종료 상태: 0 내용이 같음, 1 다름, 2 잘못된 사용법 또는 읽을 수 없는 파일. 각 줄은 첫 "
     "파일에만\n있는 것(-), 둘째 파일에만 있는 것(+), 서로 다른 것을 알려줍니다. 순서, 공백, "
     "주석은\n따지지 않습니다."},
    {"Rule file or index", "Fichier de règles ou index", "ルールファイルまたは索引",
     "규칙 파일 또는 색인"},
    {"The one to compare it with", "Celui avec lequel comparer", "比較する相手のファイル",
     "비교할 상대 파일"},
    // units
    {"Convert a value from one unit to another, or list the units",
     "Convertit une valeur d’une unité à une autre, ou liste les unités",
     "値を別の単位に換算するか、単位を一覧表示します",
     "값을 다른 단위로 변환하거나 단위를 나열합니다"},
    {"Exit status: 0 the result is printed, 2 a value that is no number, an unknown\nunit, or two "
     "units that do not measure the same.",
     "Code de retour\u00A0: 0 résultat affiché, 2 valeur qui n’est pas un nombre, unité inconnue "
     "ou\nunités qui ne mesurent pas la même grandeur.",
     "終了ステータス: 0 結果を表示した、2 値が数値でない、不明な単位、または量の異なる単位。",
     "종료 상태: 0 결과를 표시함, 2 숫자가 아닌 값, 알 수 없는 단위 또는 서로 다른 양의 단위."},
    {"A decimal number", "Un nombre décimal", "10 進数", "십진수"},
    {"The symbol or name of its unit, as mm or millimetre",
     "Symbole ou nom anglais de son unité, comme mm ou millimetre",
     "その単位の記号または英語名（mm、millimetre など）",
     "그 단위의 기호 또는 영문 이름(mm, millimetre 등)"},
    {"That of the unit to convert it to", "Idem pour l’unité cible", "換算先の単位の記号または名前",
     "변환할 단위의 기호 또는 이름"},
    {"List the units with their symbols and codes",
     "Liste les unités avec leurs symboles et leurs codes",
     "単位を記号とコードとともに一覧表示します", "단위를 기호 및 코드와 함께 나열합니다"},
    // db
    {"Show the rule database's connection, or look something up in it",
     "Montre la connexion à la base de données des règles, ou y cherche quelque chose",
     "ルールデータベースの接続を表示するか、データを検索します",
     "규칙 데이터베이스의 연결을 보여주거나 데이터를 조회합니다"},
    {"Exit status: 0 found or done, 1 not found or no database, 2 bad usage. Lengths are\nin "
     "millimetres. A database file that is not there is made. --data DIR may follow\nevery "
     "command.",
     "Code de retour\u00A0: 0 trouvé ou fait, 1 introuvable ou sans base de données, 2 mauvais "
     "usage. Les\nlongueurs sont en millimètres. Un fichier de base de données absent est créé. "
     "--data DIR peut\nsuivre chaque commande.",
     "終了ステータス: 0 見つかった、または完了、1 見つからない、またはデータベースがない、2 "
     "使い方の誤り。\n長さの単位はミリメートルです。データベースファイルがなければ作成します。--"
     "data DIR は\nどのコマンドの後にも指定できます。",
     "종료 상태: 0 찾았거나 완료함, 1 찾지 못했거나 데이터베이스 없음, 2 잘못된 사용법. "
     "길이는\n밀리미터입니다. 데이터베이스 파일이 없으면 만듭니다. --data DIR은 모든 명령 뒤에 쓸 "
     "수 있습니다."},
    {"Make or upgrade the reference tables", "Crée ou met à niveau les tables de référence",
     "参照テーブルを作成または更新します", "참조 테이블을 만들거나 업그레이드합니다"},
    {"List the drills", "Liste les forets", "ドリルを一覧表示します", "드릴을 나열합니다"},
    {"The drill closest to a diameter", "Le foret le plus proche d’un diamètre",
     "直径に最も近いドリル", "지름에 가장 가까운 드릴"},
    {"In millimetres", "En millimètres", "ミリメートル単位", "밀리미터 단위"},
    {"Whole and half millimetres only", "Millimètres entiers et demi-millimètres seulement",
     "1 mm と 0.5 mm 刻みのみ", "1 mm와 0.5 mm 단위만"},
    {"A metric thread and its tap drill", "Un filetage métrique et son avant-trou",
     "メートルねじと下穴", "미터 나사와 탭 드릴"},
    {"Such as M6 or M8x1", "Par exemple M6 ou M8x1", "M6、M8x1 など", "예: M6, M8x1"},
    {"The threads of a diameter", "Les filetages d’un diamètre", "直径に対応するねじ",
     "지름에 해당하는 나사"},
    {"The clearance hole of a bolt", "Le trou de passage d’une vis", "ボルトの通し穴",
     "볼트의 관통 구멍"},
    {"Of the bolt, in millimetres", "De la vis, en millimètres", "ボルトの直径（ミリメートル）",
     "볼트의 지름(밀리미터)"},
    {"fine, medium or coarse", "fine, medium ou coarse (fin, moyen, large)",
     "fine、medium、coarse（精、中、粗）", "fine, medium 또는 coarse(정밀, 중간, 거침)"},
    {"List the materials", "Liste les matériaux", "材料を一覧表示します", "재료를 나열합니다"},
    {"A material's limits", "Les limites d’un matériau", "材料の限界値", "재료의 한계값"},
    {"Such as S235JR", "Par exemple S235JR", "S235JR など", "예: S235JR"},
    {"The least inner radius of a bend", "Le rayon de pliage intérieur minimal", "最小内側曲げ半径",
     "최소 내측 굽힘 반지름"},
    {"A material or its bend group", "Un matériau ou son groupe de pliage",
     "材料またはその曲げグループ", "재료 또는 굽힘 그룹"},
    {"Of the sheet, in millimetres", "De la tôle, en millimètres", "板厚（ミリメートル）",
     "판재 두께(밀리미터)"},
    {"across or along the rolling direction",
     "across ou along\u00A0: perpendiculaire ou parallèle au laminage",
     "across または along（圧延方向に直角または平行）",
     "across 또는 along(압연 방향에 직각 또는 평행)"},
    {"List the least walls of the processes",
     "Liste les épaisseurs de paroi minimales des procédés", "工法ごとの最小肉厚を一覧表示します",
     "공정별 최소 두께를 나열합니다"},
    {"The least wall of a process", "L’épaisseur de paroi minimale d’un procédé", "工法の最小肉厚",
     "공정의 최소 두께"},
    {"Such as \"injection moulding\"", "Par exemple \"injection moulding\"",
     "\"injection moulding\" など", "예: \"injection moulding\""},
    {"Such as ABS; else what holds for any material",
     "Par exemple ABS\u00A0; sinon ce qui vaut pour tout matériau",
     "ABS など。省略時は全材料に共通の値", "예: ABS. 생략하면 모든 재료에 적용되는 값"},
    {"Run one statement that reads (SELECT, WITH, VALUES, EXPLAIN)",
     "Exécute une instruction de lecture (SELECT, WITH, VALUES, EXPLAIN)",
     "読み取り文を 1 つ実行します（SELECT、WITH、VALUES、EXPLAIN）",
     "읽기 문 하나를 실행합니다(SELECT, WITH, VALUES, EXPLAIN)"},
    {"In the language of the database", "Dans le langage de la base de données",
     "データベースの言語で記述します", "데이터베이스의 언어로 작성"},
    {"Rows to print at most, 1000 unless given", "Nombre maximal de lignes, 1000 par défaut",
     "表示する最大行数。省略時は 1000", "표시할 최대 행 수. 생략하면 1000"},
    // doctor
    {"Look at the installation and its configuration, and tell what is wrong and how to mend it",
     "Examine l’installation et sa configuration, signale ce qui ne va pas et comment y remédier",
     "インストールと設定を調べ、問題点とその直し方を示します",
     "설치와 설정을 살펴보고 잘못된 점과 고치는 방법을 알려줍니다"},
    {"Exit status: 0 nothing is wrong, 1 something is, 2 bad usage. A note tells what\nis merely "
     "not set up. No file is made; modules are loaded to see whether they\nload, and a database "
     "that is opened gets its tables brought up to date, as by\nevery use. The language is that "
     "which the library was loaded with, whatever --registry\nsays.",
     "Code de retour\u00A0: 0 rien d’anormal, 1 quelque chose ne va pas, 2 mauvais usage. Une "
     "remarque signale\nce qui n’est simplement pas configuré. Aucun fichier n’est créé\u00A0; les "
     "modules sont chargés pour\nvoir s’ils se chargent, et les tables d’une base ouverte sont "
     "mises à jour, comme à chaque usage.\nLa langue est celle du chargement de la bibliothèque, "
     "quoi que dise --registry.",
     "終了ステータス: 0 問題なし、1 問題あり、2 "
     "使い方の誤り。「注意」は単に設定されていないことを\n示します。ファイルは作成しません。モジュ"
     "ールは読み込めるか確かめるために読み込み、開いた\nデータベースのテーブルは通常の使用時と同じ"
     "く更新します。言語は --registry にかかわらず、\nライブラリの読み込み時のものです。",
     "종료 상태: 0 이상 없음, 1 이상 있음, 2 잘못된 사용법. 참고는 단지 설정되지 않은 것을 "
     "알려줍니다.\n파일은 만들지 않습니다. 모듈은 로드되는지 보기 위해 로드하며, 열린 "
     "데이터베이스의 테이블은\n모든 사용 때와 같이 갱신됩니다. 언어는 --registry와 관계없이 "
     "라이브러리를 로드할 때의 것입니다."},
    // new, register, unregister and completion
    {"Write a small working rule module, script rule, engine or host to start from",
     "Écrit un petit module de règles, une règle par script, un moteur ou un hôte fonctionnels "
     "comme point de départ",
     "出発点となる、動作する小さなルールモジュール、スクリプトルール、エンジン、ホストを作成します",
     "시작점이 될 작고 작동하는 규칙 모듈, 스크립트 규칙, 엔진 또는 호스트를 만듭니다"},
    {"Exit status: 0 the files are written, 2 bad usage, a folder that is not empty,\nor one that "
     "cannot be written. Nothing is overwritten.",
     "Code de retour\u00A0: 0 fichiers écrits, 2 mauvais usage, dossier non vide ou impossible à "
     "écrire.\nRien n’est écrasé.",
     "終了ステータス: 0 ファイルを書き込んだ、2 "
     "使い方の誤り、フォルダーが空でない、または\n書き込めない。上書きはしません。",
     "종료 상태: 0 파일을 썼음, 2 잘못된 사용법, 비어 있지 않거나 쓸 수 없는 폴더.\n아무것도 "
     "덮어쓰지 않습니다."},
    {"What it is called", "Son nom", "名前", "이름"},
    {"Where to write it, else a new folder of that name",
     "Où l’écrire, sinon un nouveau dossier de ce nom",
     "書き込み先。省略時は同名の新しいフォルダー", "쓸 위치. 생략하면 같은 이름의 새 폴더"},
    {"A rule module: compiled rules with texts in two languages",
     "Module de règles\u00A0: règles compilées avec des textes en deux langues",
     "ルールモジュール: 2 か国語のテキストを持つコンパイル済みルール",
     "규칙 모듈: 두 언어의 텍스트가 있는 컴파일된 규칙"},
    {"A script rule, with its index and two rule files",
     "Règle par script, avec son index et deux fichiers de règles",
     "スクリプトルールと索引、2 つのルールファイル", "스크립트 규칙과 색인, 규칙 파일 두 개"},
    {"An engine of scripts in machine code, with its type library",
     "Moteur de scripts en code machine, avec sa bibliothèque de types",
     "機械語のスクリプトエンジンとタイプライブラリ", "기계어로 된 스크립트 엔진과 형식 라이브러리"},
    {"A program that runs script rules", "Programme qui exécute des règles par script",
     "スクリプトルールを実行するプログラム", "스크립트 규칙을 실행하는 프로그램"},
    {"Register an engine's type library, so that rules can name the engine",
     "Enregistre la bibliothèque de types d’un moteur, pour que des règles puissent le nommer",
     "ルールからエンジンを指定できるように、タイプライブラリを登録します",
     "규칙에서 엔진을 지정할 수 있도록 형식 라이브러리를 등록합니다"},
    {"Exit status: 0 it is registered or, with --remove, is not any more, 1 there was nothing\nto "
     "remove, 2 bad usage, a file that is no type library, or a registry file that cannot\nbe "
     "written. Prints the element by which a rule names the engine.",
     "Code de retour\u00A0: 0 enregistré ou, avec --remove, retiré, 1 rien à retirer, 2 mauvais "
     "usage, fichier\nqui n’est pas une bibliothèque de types ou fichier de registre impossible à "
     "écrire. Affiche l’élément\npar lequel une règle nomme le moteur.",
     "終了ステータス: 0 登録した、または --remove で登録を解除した、1 解除するものがない、2 "
     "使い方の誤り、\nタイプライブラリでないファイル、または書き込めないレジストリファイル。ルール"
     "でエンジンを\n指定する要素を表示します。",
     "종료 상태: 0 등록함 또는 --remove로 등록을 해제함, 1 해제할 것이 없음, 2 잘못된 사용법, "
     "형식\n라이브러리가 아닌 파일 또는 쓸 수 없는 레지스트리 파일. 규칙에서 엔진을 지정하는 "
     "요소를\n표시합니다."},
    {"Take the registration back; the library may be gone already",
     "Retire l’enregistrement\u00A0; la bibliothèque peut avoir disparu",
     "登録を解除します。ライブラリが既になくてもかまいません",
     "등록을 해제합니다. 라이브러리가 이미 없어도 됩니다"},
    {"Type library, beside the module of the same stem",
     "Bibliothèque de types, à côté du module de même nom",
     "同名のモジュールの隣にあるタイプライブラリ", "같은 이름의 모듈 옆에 있는 형식 라이브러리"},
    {"For all users, in /etc/corvane/machine.reg, not for the user alone",
     "Pour tous les utilisateurs, dans /etc/corvane/machine.reg",
     "/etc/corvane/machine.reg に全ユーザー用として登録します",
     "/etc/corvane/machine.reg에 모든 사용자용으로 등록합니다"},
    {"Print what a shell needs to complete commands",
     "Affiche ce qu’il faut à un shell pour compléter les commandes",
     "シェルのコマンド補完に必要なものを表示します",
     "셸의 명령 자동 완성에 필요한 내용을 출력합니다"},
    {"Exit status: 0 it is printed, 2 bad usage.",
     "Code de retour\u00A0: 0 affiché, 2 mauvais usage.",
     "終了ステータス: 0 表示した、2 使い方の誤り。", "종료 상태: 0 출력함, 2 잘못된 사용법."},
    {"bash or zsh", "bash ou zsh", "bash または zsh", "bash 또는 zsh"},
};

}  // namespace language
