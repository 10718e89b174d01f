# make run   - install packages, release build, start Quorvel
# make test  - install packages, run the test suite offscreen twice: from a sanitizer debug build,
#              then from a plain debug build (a freed buffer read inside Qt shows only there)
# make bench - install packages, release build of the benchmarks, run them
JOBS ?= $(shell nproc)
RELEASE := build/release
DEBUG := build/debug
PLAIN := build/plain
BENCH := build/bench

.PHONY: deps run build test bench clean

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

bench: deps
	cmake -S . -B $(BENCH) -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUORVEL_TESTS=OFF -DQUORVEL_BENCH=ON
	cmake --build $(BENCH) -j $(JOBS)
	for b in $$(find $(BENCH)/bench -maxdepth 1 -type f -executable -name 'bench_*' | sort); do \
	  $$b --benchmark_min_time=0.5 || exit 1; done

clean:
	rm -rf build
