#!/usr/bin/env bash
# Fails at a finding of cppcheck that checks/cppcheck.txt does not explain. Clang's static analyzer runs with clang-tidy.
# Usage: cppcheck.sh, from the root
set -eu -o pipefail
mapfile -t files < <(git ls-files 'Source/*.cpp' 'cstring/*.cpp' 'Mac/*.cpp' 'Platform/*.cpp')
exec cppcheck -q -j "$(nproc)" --std=c++20 --language=c++ --enable=warning,performance,portability --error-exitcode=1 \
    --suppressions-list=checks/cppcheck.txt --suppress=missingIncludeSystem -DLUM_NATIVE_PATHS=Mac -Iinclude -I. "${files[@]}"
