#!/usr/bin/env bash
# Pictures of the RTF cards as LibreOffice shows them: office.sh FOLDER-OF-RTF FOLDER-OF-PNG
# Needs soffice and pdftoppm.
set -euo pipefail

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
soffice "-env:UserInstallation=file://$work/profile" --headless --convert-to pdf \
    --outdir "$work" "$1"/*.rtf >/dev/null
for pdf in "$work"/*.pdf; do
    card=$(basename "$pdf" .pdf)
    read -r width height < <(
        sed -n 's/.* width="\([0-9]*\)" height="\([0-9]*\)" viewBox.*/\1 \2/p' "$1/${card%-objects}.svg")
    if ((width > 610)); then height=$((height * 610 / width)); fi
    pdftoppm -r 96 -x 96 -y 96 -W 610 -H "$height" -png -singlefile "$pdf" "$2/$card-office"
done
