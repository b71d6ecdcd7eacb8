# The two commands of the README, and a few more. Each sets up what it needs.

.PHONY: test demo bench setup clean

test: setup
	tools/test

demo: setup
	tools/demo

bench: setup
	tools/bench

setup:
	tools/setup

clean:
	rm -rf build out
