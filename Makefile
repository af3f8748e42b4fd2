# The two commands of the README: `make run` and `make test`. Both install what
# is missing first, so a fresh Debian 12 machine needs nothing else.
BUILD    ?= build
JOBS     ?= $(shell nproc)
SANITIZE ?= 0
ifeq ($(SANITIZE),1)
BUILD    := build-asan
CMAKE_EXTRA := -DZAVIK_SANITIZE=ON
endif

.PHONY: run test setup build bench fuzz compat clean package

setup:
	@bash scripts/setup.sh

$(BUILD)/build.ninja: | setup
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_EXTRA)

build: setup $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

run: build
	cd $(BUILD)/app && ./zavik-wizard

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

bench: setup
	cmake -S . -B build-bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DZAVIK_TESTS=OFF -DZAVIK_BENCH=ON
	cmake --build build-bench -j $(JOBS) --target zavik-benches
	@for b in build-bench/bench/zavik-bench-*; do [ -f $$b ] || continue; echo "== $$b"; $$b || exit 1; done

fuzz: setup
	CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZAVIK_TESTS=OFF -DZAVIK_FUZZ=ON
	cmake --build build-fuzz -j $(JOBS) --target zavik-fuzzers
	@# New inputs go to build-fuzz/corpus; fuzz/corpus only seeds, so the tree stays clean.
	@for f in build-fuzz/fuzz/zavik-fuzz-*; do [ -f $$f ] || continue; echo "== $$f"; mkdir -p build-fuzz/corpus/$$(basename $$f); \
	  $$f -max_total_time=$${FUZZ_SECONDS:-30} -rss_limit_mb=2048 build-fuzz/corpus/$$(basename $$f) fuzz/corpus || exit 1; done

# The store against the Windows profile functions under Wine: hand cases and
# CASES random ones from SEED. The Windows side is a console program built with
# the mingw cross compiler.
SEED  ?= 1
CASES ?= 300
WINE  ?= /usr/lib/wine/wine64
compat: setup $(BUILD)/build.ninja
	@bash scripts/setup.sh wine64 gcc-mingw-w64-x86-64-win32
	cmake --build $(BUILD) -j $(JOBS) --target zavik-compat
	@mkdir -p $(BUILD)/compat
	x86_64-w64-mingw32-gcc -O2 -Wall -Wextra -Werror -o $(BUILD)/compat/profilecalls.exe src/tools/compat/profilecalls.c
	$(BUILD)/zavik-compat --exe $(BUILD)/compat/profilecalls.exe --wine $(WINE) --work $(BUILD)/compat --seed $(SEED) --cases $(CASES)
	cmake --build $(BUILD) -j $(JOBS) --target zavik-scenario
	sh src/tools/compat/wizard-utf16.sh $(BUILD)/zavik-scenario $(BUILD)/compat/profilecalls.exe $(WINE) $(BUILD)/compat

# The Debian package of the program, then lintian's word on it.
package: setup
	@bash scripts/setup.sh dpkg-dev lintian
	cmake -S . -B build-deb -G Ninja -DCMAKE_BUILD_TYPE=Release -DZAVIK_TESTS=OFF -DCMAKE_INSTALL_PREFIX=/usr
	cmake --build build-deb -j $(JOBS)
	cd build-deb && cpack -G DEB
	lintian --fail-on error build-deb/zavik-wizard_*.deb

clean:
	rm -rf build build-asan build-bench build-fuzz build-deb
