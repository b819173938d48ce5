"""The recipe of qvox for Conan 2, out of the checkout that it lies in: conan create packaging/conan"""

import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load, rmdir


class QvoxRecipe(ConanFile):
    name = "qvox"
    description = "XML library for Japanese and Unicode text"
    topics = ("xml", "sax", "dom", "japanese")
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"tools": [True, False]}
    default_options = {"tools": False}

    @property
    def _checkout(self):
        return os.path.join(self.recipe_folder, "..", "..")

    def set_version(self):
        header = load(self, os.path.join(self._checkout, "include/qvox/version.h"))
        self.version = re.search(r'#define QVOX_VERSION "([0-9.]+)"', header).group(1)

    def export_sources(self):
        for part in ("CMakeLists.txt", "cmake/*", "include/*", "src/*", "tools/*", "docs/*"):
            copy(self, part, self._checkout, self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def validate(self):
        check_min_cppstd(self, 17)

    def requirements(self):
        if self.options.tools:
            self.requires("cli11/[>=2.3 <3]", visible=False)

    def build_requirements(self):
        self.tool_requires("bison/[>=3.7]")

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["QVOX_BUILD_TOOLS"] = bool(self.options.tools)
        toolchain.generate()
        CMakeDeps(self).generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        rmdir(self, os.path.join(self.package_folder, "lib", "pkgconfig"))
        rmdir(self, os.path.join(self.package_folder, "lib", "cmake"))

    def package_info(self):
        self.cpp_info.libs = ["QVOX" if self.settings.os == "Windows" else "qvox"]
        self.cpp_info.set_property("cmake_file_name", "qvox")
        self.cpp_info.set_property("cmake_target_name", "qvox::qvox")
        self.cpp_info.set_property("pkg_config_name", "qvox")
