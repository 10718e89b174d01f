# make run   - install packages, release build, start Quorvel
# make test  - install packages, run the test suite offscreen twice: from a sanitizer debug build,
#              then from a plain debug build (a freed buffer read inside Qt shows only there)
# make package - install packages, release build with Debian's hardening flags, the .deb in build/package
# make bench - install packages, release build of the benchmarks, run them
# make fuzz  - install packages, clang build of the fuzz targets, fuzz the day-file, workbook and delimited-text readers
#              for FUZZ_SECONDS each
JOBS ?= $(shell nproc)
RELEASE := build/release
DEBUG := build/debug
PLAIN := build/plain
BENCH := build/bench
FUZZ := build/fuzz
PACKAGE := build/package
# Debian's hardening flags; no -g, the packaged program is stripped.
DEB_FLAGS = DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP=-g dpkg-buildflags --get
FUZZ_SECONDS ?= 180

.PHONY: deps run build test package bench fuzz clean

deps:
	@./scripts/install-deps

build: deps
	cmake -S . -B $(RELEASE) -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUORVEL_TESTS=OFF
	cmake --build $(RELEASE) -j $(JOBS)

run: build
	./$(RELEASE)/src/quorvel

test: deps
	cmake -S . -B $(DEBUG) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQUORVEL_SANITIZE=ON -DQUORVEL_TESTS=ON
	cmake --build $(DEBUG) -j $(JOBS)
	cd $(DEBUG) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)
	cmake -S . -B $(PLAIN) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQUORVEL_SANITIZE=OFF -DQUORVEL_TESTS=ON
	cmake --build $(PLAIN) -j $(JOBS)
	cd $(PLAIN) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

package: deps
	cmake -S . -B $(PACKAGE) -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUORVEL_TESTS=OFF -DQUORVEL_PACKAGE=ON \
	  -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_CXX_FLAGS="$$($(DEB_FLAGS) CPPFLAGS) $$($(DEB_FLAGS) CXXFLAGS)" \
	  -DCMAKE_EXE_LINKER_FLAGS="$$($(DEB_FLAGS) LDFLAGS)"
	cmake --build $(PACKAGE) -j $(JOBS)
	cd $(PACKAGE) && cpack -G DEB

bench: deps
	cmake -S . -B $(BENCH) -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUORVEL_TESTS=OFF -DQUORVEL_BENCH=ON
	cmake --build $(BENCH) -j $(JOBS)
	for b in $$(find $(BENCH)/bench -maxdepth 1 -type f -executable -name 'bench_*' | sort); do \
	  $$b --benchmark_min_time=0.5 || exit 1; done

fuzz: deps
	cmake -S . -B $(FUZZ) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
	  -DQUORVEL_TESTS=OFF -DQUORVEL_FUZZ=ON
	cmake --build $(FUZZ) -j $(JOBS) --target fuzz_realtick fuzz_workbook fuzz_delimited make_workbook_seeds
	mkdir -p $(FUZZ)/corpus $(FUZZ)/corpus-workbook $(FUZZ)/corpus-delimited $(FUZZ)/findings
	cp -n fuzz/corpus/* $(FUZZ)/corpus/
	cp -n fuzz/corpus-delimited/* tests/fixtures/brokers/* $(FUZZ)/corpus-delimited/
	$(FUZZ)/fuzz/make_workbook_seeds $(FUZZ)/corpus-workbook
	$(FUZZ)/fuzz/fuzz_realtick $(FUZZ)/corpus -dict=fuzz/realtick.dict -max_total_time=$(FUZZ_SECONDS) \
	  -timeout=10 -max_len=65536 -artifact_prefix=$(FUZZ)/findings/ -print_final_stats=1
	$(FUZZ)/fuzz/fuzz_workbook $(FUZZ)/corpus-workbook -max_total_time=$(FUZZ_SECONDS) \
	  -timeout=10 -max_len=262144 -artifact_prefix=$(FUZZ)/findings/ -print_final_stats=1
	$(FUZZ)/fuzz/fuzz_delimited $(FUZZ)/corpus-delimited -max_total_time=$(FUZZ_SECONDS) \
	  -timeout=10 -max_len=65536 -artifact_prefix=$(FUZZ)/findings/ -print_final_stats=1

clean:
	rm -rf build
