# Everything a person types here. Each target first installs what it lacks (scripts/install-packages),
# so a fresh Debian machine needs no more than git and make.

SHELL := /bin/bash
JOBS ?= 2
INSTALL := scripts/install-packages
BUILD := cmake --build --parallel $(JOBS) --preset

.DEFAULT_GOAL := all
.PHONY: all plugins install uninstall demo presets-check hosts-check test bench format lint asan tsan clang fuzz clean help

all: ## build the program: build/bin/orvantesco
	@$(INSTALL) build
	@cmake --preset release -DORVANTESCO_BENCH=OFF -DORVANTESCO_PLUGINS=OFF
	@$(BUILD) release --target orvantesco

plugins: ## build the plug-in formats below build/plugins
	@$(INSTALL) build plugins
	@cmake --preset release -DORVANTESCO_BENCH=OFF -DORVANTESCO_PLUGINS=ON
	@$(BUILD) release --target orvantesco_plugins

install: plugins ## put plug-ins, programs and presets where hosts look; PREFIX=/usr/local for every user
	@$(BUILD) release --target orvantesco
	@scripts/install-plugins install $(if $(PREFIX),--prefix "$(PREFIX)")

uninstall: ## take away what install has put there, but no preset of yours
	@scripts/install-plugins uninstall $(if $(PREFIX),--prefix "$(PREFIX)")

demo: all ## render a recording through the delay into build/demo/ and picture it
	@$(INSTALL) demo
	@scripts/demo

presets-check: all ## listen to every factory preset, draw docs/presets.png; fails where one is out of order
	@$(INSTALL) demo pictures presets
	@scripts/check-presets --jobs $(JOBS) --sheet docs/presets.png

hosts-check: plugins all ## play presets in Ardour and under JACK, without a screen, and compare with the program
	@$(INSTALL) hosts presets
	@cmake --preset release -DORVANTESCO_BENCH=OFF -DORVANTESCO_PLUGINS=ON
	@$(BUILD) release --target jack-player --target clap-player
	@scripts/check-hosts

test: ## build everything and run every test
	@$(INSTALL) build plugins test
	@cmake --preset dev -DORVANTESCO_BENCH=OFF
	@$(BUILD) dev
	@ctest --preset dev --parallel $(JOBS)

test-long: test ## the tests, then ten thousand round trips and a minute of loads in full length
	@ORVANTESCO_LONG_TESTS=1 ctest --preset dev -R 'RandomStatesReadBack|RandomPresetsComeBack|AHundredLoads'

bench: ## measure kernels, blocks and the engine; ARGS="--benchmark_filter=..." narrows it
	@$(INSTALL) build plugins bench
	@cmake --preset release -DORVANTESCO_BENCH=ON -DORVANTESCO_PLUGINS=ON
	@$(BUILD) release --target orvantesco_bench
	@build/bin/orvantesco_bench $(ARGS)

format: ## bring every source file into the project's format
	@$(INSTALL) lint
	@scripts/format

lint: ## format, include directions, leftovers and clang-tidy
	@$(INSTALL) build plugins test bench clang lint
	@scripts/format --check
	@scripts/check-floors
	@scripts/check-text
	@scripts/tidy --jobs $(JOBS)

asan: ## build with clang, and run every test under the address and undefined-behaviour sanitizers
	@$(INSTALL) build plugins test clang
	@cmake --preset asan
	@$(BUILD) asan
	@ctest --preset asan --parallel $(JOBS)

tsan: ## run the tests that use several threads under the thread sanitizer
	@$(INSTALL) build plugins test
	@cmake --preset tsan
	@$(BUILD) tsan
	@ctest --preset tsan --parallel $(JOBS)

clang: ## build everything with clang, and run every test
	@$(INSTALL) build plugins test bench clang
	@cmake --preset clang
	@$(BUILD) clang
	@ctest --preset clang --parallel $(JOBS)

fuzz: ## feed the readers of presets and states with foreign bytes; SECONDS_EACH=60
	@$(INSTALL) build clang
	@cmake --preset fuzz
	@$(BUILD) fuzz --target fuzzers
	@scripts/fuzz $(SECONDS_EACH)

clean: ## remove everything that was built
	@rm -rf build

help: ## this list
	@awk -F':.*## ' '/^[a-z-]+:.*## / { printf "  make %-14s %s\n", $$1, $$2 }' $(MAKEFILE_LIST)
