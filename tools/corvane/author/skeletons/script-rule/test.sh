#!/bin/sh
# The box is 10 mm long: shorter than the limit of rules.xml, and longer than that of strict.xml.
cd "$(dirname "$0")" || exit 2
corvane lint rules.xml strict.xml --scripts scripts || exit 1
corvane run rules.xml --scripts scripts --part box.stl || exit 1
corvane run strict.xml --scripts scripts --part box.stl
[ $? -eq 1 ]
