# Thin wrapper over the CMake presets. Every target first installs missing Debian packages.
SHELL := /bin/bash
JOBS ?= $(shell nproc)
SUDO := $(shell [ "$$(id -u)" = 0 ] || echo sudo)
GALLERY_DIR ?= $(CURDIR)/out/gallery

.PHONY: deps build run test asan tsan bench fuzz clean

deps:
	@missing=$$(grep -v -E '^\s*(#|$$)' packages.txt | while read -r p; do \
	    dpkg-query -W -f='$${Status}\n' "$$p" 2>/dev/null | grep -q 'install ok installed' || echo "$$p"; done); \
	if [ -n "$$missing" ]; then \
	    echo "Installing: $$missing"; \
	    $(SUDO) env DEBIAN_FRONTEND=noninteractive apt-get update -qq && \
	    $(SUDO) env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $$missing; \
	fi

build: deps
	cmake --preset dev
	cmake --build --preset dev -j $(JOBS)

run: build
	./tools/run-workbench.sh build/dev "$(GALLERY_DIR)"

test: build
	ctest --preset dev -j $(JOBS)

asan: deps
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	ctest --preset asan -j $(JOBS)

# The tests that run threads (their names say Thread or Concurrent), under the thread sanitizer.
tsan: deps
	cmake --preset tsan
	cmake --build --preset tsan -j $(JOBS)
	ctest --preset tsan -j $(JOBS)

bench: deps
	cmake --preset release
	cmake --build --preset release -j $(JOBS) --target tessel-bench
	./build/release/bench/tessel-bench

fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)

clean:
	rm -rf build out
