"""Lum for Conan 2: conan create packaging/conan. Builds the tree that it is in."""
import os
import re

from conan import ConanFile
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy

TREE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")


class Lum(ConanFile):
    name = "lum"
    description = "URIs, 16-bit strings, text encodings and time stamps for desktop applications"
    license = "MIT"
    settings = "os", "compiler", "build_type", "arch"
    options = {"shared": [True, False]}
    default_options = {"shared": True}
    requires = "icu/[>=72]"

    def set_version(self):
        with open(os.path.join(TREE, "CMakeLists.txt"), encoding="utf-8") as file:
            self.version = re.search(r"^project\(Lum VERSION (\S+)", file.read(), re.M).group(1)

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "LICENSE", "cmake/*", "include/*", "Source/*", "Mac/*", "Platform/*", "cstring/*",
                        "tools/debuggers/*"):
            copy(self, pattern, TREE, self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables.update(LUM_BUILD_TESTS=False, LUM_BUILD_TOOLS=False, LUM_BUILD_SQL=False,
                                         LUM_WITH_PLIST="OFF")
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))

    def package_info(self):
        # The package's own CMake files are those that a system's package has.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = [os.path.join("lib", "cmake", "Lum")]
        self.cpp_info.libs = ["lum"]
