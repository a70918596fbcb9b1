# The commands that a developer needs; each installs what is missing first.
.PHONY: run build everything test check bench performance kill valgrind fuzz format package windows clean

installation = build/installation

run: build
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then $(installation)/tarvik; else sh tools/play_docket.sh $(installation); fi

build:
	@sh tools/install_packages.sh build
	@cmake --preset release
	@cmake --build --preset release --target programs

everything:
	@sh tools/install_packages.sh build test
	@cmake --preset release
	@cmake --build --preset release

test:
	@sh tools/install_packages.sh libreoffice
	@$(MAKE) --no-print-directory everything
	@ctest --preset release -j 2 --no-tests=error

check:
	@sh tools/install_packages.sh build test check libreoffice windows
	@sh tools/check.sh

bench:
	@sh tools/install_packages.sh bench libreoffice
	@$(MAKE) --no-print-directory everything
	@sh bench/run.sh $(installation) build/performance

performance:
	@sh tools/install_packages.sh bench libreoffice
	@$(MAKE) --no-print-directory everything
	@sh bench/run.sh $(installation) docs

kill: everything
	@python3 tests/kills/kills.py $(installation)/tarvik-play build/tests/kill_points.so installation installation --every --random 200

valgrind:
	@sh tools/install_packages.sh build valgrind
	@cmake --preset debug
	@cmake --build --preset debug --target tarvik-play installation
	@sh tools/valgrind_docket.sh build/debug/installation

# make fuzz SECONDS=3600 searches an hour with each
SECONDS = 60
fuzz:
	@sh tools/install_packages.sh build test fuzz
	@cmake --preset fuzz
	@cmake --build --preset fuzz
	@sh fuzz/run.sh $(SECONDS)

format:
	@sh tools/install_packages.sh check
	@git ls-files --cached --others --exclude-standard '*.cpp' '*.h' | xargs clang-format -i

package:
	@sh tools/install_packages.sh build libreoffice package
	@cmake --preset package
	@cmake --build --preset package
	@cd build/package && rm -f *.deb && cpack
	@lintian --fail-on error build/package/*.deb

windows:
	@sh tools/install_packages.sh build test windows windows-package
	@sh tools/windows/build.sh

# Qt for Windows takes a quarter of an hour: it and the other libraries stay.
clean:
	@[ ! -e build ] || find build -mindepth 1 ! -path build/windows ! -path 'build/windows/libraries*' -delete
