#!/bin/sh
# Lets the public validator of SARIF look at what the program writes. It comes from npm; without a way there the test is
# skipped, with a word.
# Usage: sarif_test.sh CORVANE RESULTS.json FOLDER
set -eu
corvane=$1 results=$2 folder=$3
package=@microsoft/sarif-multitool-linux
mkdir -p "$folder"
validator=$folder/node_modules/$package/Sarif.Multitool
if [ ! -e "$validator" ]; then
    if ! npm install --prefix "$folder" --no-audit --no-fund "$package@5.7.0" >"$folder/npm.log" 2>&1; then
        tail -n 3 "$folder/npm.log"
        echo "skipped: the validator cannot be had from npm"
        exit 77
    fi
fi
chmod u+x "$validator"
status=0
"$corvane" merge "$results" --output "sarif=$folder/results.sarif" >/dev/null || status=$?
[ "$status" -eq 1 ]
export DOTNET_SYSTEM_GLOBALIZATION_INVARIANT=1
"$validator" validate "$folder/results.sarif" >"$folder/validator.log" 2>&1 || true
cat "$folder/validator.log"
grep -q 'Analysis completed successfully' "$folder/validator.log"
# SARIF2005 asks for a home page of the program.
! grep -E ': (error|warning) ' "$folder/validator.log" | grep -v SARIF2005
