#!/usr/bin/env bash
# Runs what packaging/ has for other package managers as far as that goes without them: each recipe's steps are carried
# out with stand-ins for the functions it calls. The options it gives CMake must exist, and the versions must be right.
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
version=$(sed -nE 's/^project\(Lum VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
# configured NAME: what CMake said holds no complaint about an option.
configured() {
    ! grep -iE 'warning|not used by the project|error' "$work/$1.log" || { cat "$work/$1.log"; echo "FAILED: $1"; exit 1; }
}

grep -q "\"version\": \"$version\"" packaging/vcpkg/lum/vcpkg.json || { echo "FAILED: vcpkg.json has another version than $version"; exit 1; }
python3 -m json.tool packaging/vcpkg/lum/vcpkg.json >/dev/null
cat >"$work/vcpkg.cmake" <<'END_OF_STANDINS'
set(VCPKG_LIBRARY_LINKAGE static)
set(CURRENT_PACKAGES_DIR ${WORK}/vcpkg-package)
function(vcpkg_check_features)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "OUT_FEATURE_OPTIONS" "FEATURES")
    list(GET arg_FEATURES 1 option)
    set(${arg_OUT_FEATURE_OPTIONS} -D${option}=OFF PARENT_SCOPE)
endfunction()
function(vcpkg_cmake_configure)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS")
    execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S ${arg_SOURCE_PATH} -B ${WORK}/vcpkg ${arg_OPTIONS} COMMAND_ERROR_IS_FATAL ANY)
endfunction()
function(vcpkg_cmake_install)
    file(MAKE_DIRECTORY ${CURRENT_PACKAGES_DIR}/lib/cmake/Lum)
endfunction()
function(vcpkg_cmake_config_fixup)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "PACKAGE_NAME;CONFIG_PATH" "")
    if(NOT EXISTS ${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH})
        message(FATAL_ERROR "nothing is installed in ${arg_CONFIG_PATH}")
    endif()
endfunction()
function(vcpkg_fixup_pkgconfig)
endfunction()
function(vcpkg_install_copyright)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "FILE_LIST")
    file(READ ${arg_FILE_LIST} licence)
endfunction()
include(${PORT})
END_OF_STANDINS
cmake -DWORK="$work" -DPORT="$PWD/packaging/vcpkg/lum/portfile.cmake" -P "$work/vcpkg.cmake" >"$work/vcpkg.log" 2>&1 ||
    { cat "$work/vcpkg.log"; exit 1; }
configured vcpkg

PYTHONDONTWRITEBYTECODE=1 python3 - "$work" "$version" >"$work/conan.log" 2>&1 <<'END_OF_STANDINS' || { cat "$work/conan.log"; exit 1; }
import importlib.util, os, pathlib, shutil, subprocess, sys, types
work, version = pathlib.Path(sys.argv[1]), sys.argv[2]

class ConanFile:
    def __init__(self):
        self.export_sources_folder = self.source_folder = str(work / "exported")
        self.package_folder = str(work / "conan-package")
        self.cpp_info = types.SimpleNamespace(set_property=lambda *_: None)
class CMakeDeps:
    def __init__(self, recipe): pass
    def generate(self): pass
class CMakeToolchain(CMakeDeps):
    used = {}
    def __init__(self, recipe): self.cache_variables = CMakeToolchain.used
class CMake(CMakeDeps):
    def configure(self):
        options = [f"-D{name}={value}" for name, value in CMakeToolchain.used.items()]
        subprocess.run(["cmake", "-G", "Ninja", "-S", work / "exported", "-B", work / "conan", *options], check=True)
    def build(self):
        subprocess.run(["cmake", "--build", work / "conan", "--", "-n"], check=True, stdout=subprocess.DEVNULL)
    def install(self): pass
def copy(recipe, pattern, source, target):
    folder, _, below = pattern.rpartition("/") if pattern.endswith("/*") else ("", "", pattern)
    found = [pathlib.Path(source, folder)] if pattern.endswith("/*") else [pathlib.Path(source, pattern)]
    for path in found:
        goal = pathlib.Path(target, folder if pattern.endswith("/*") else pattern)
        goal.parent.mkdir(parents=True, exist_ok=True)
        shutil.copytree(path, goal) if path.is_dir() else shutil.copy(path, goal)
for name, values in {"conan": {"ConanFile": ConanFile}, "conan.tools": {},
                     "conan.tools.cmake": {"CMake": CMake, "CMakeDeps": CMakeDeps, "CMakeToolchain": CMakeToolchain, "cmake_layout": lambda _: None},
                     "conan.tools.files": {"copy": copy}}.items():
    sys.modules[name] = types.ModuleType(name)
    vars(sys.modules[name]).update(values)
spec = importlib.util.spec_from_file_location("conanfile", "packaging/conan/conanfile.py")
module = importlib.util.module_from_spec(spec)
spec.loader.exec_module(module)
recipe = module.Lum()
for step in "set_version", "export_sources", "layout", "generate", "build", "package", "package_info":
    getattr(recipe, step)()
assert recipe.version == version, recipe.version
assert os.path.exists(work / "conan-package/licenses/LICENSE")
END_OF_STANDINS
configured conan
