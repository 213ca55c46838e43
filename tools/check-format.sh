#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Fails with the places where a source differs from what clang-format would write.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
git ls-files -z --cached --others --exclude-standard -- '*.h' '*.cpp' |
    xargs -0 clang-format-19 --dry-run --Werror
shellcheck run test .ci/run tools/*.sh vellory/model/*.sh
echo "Format: clean"
