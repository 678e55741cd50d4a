#!/usr/bin/perl
# Turns a listing into items: the peer of the library's listing, with the same delimiter, patterns and filters.
#   perl listing.pl PATTERNS COMMAND OUT
# PATTERNS: the delimiter, then the patterns of working file, version, mode and locker, then the project's suffix and
# file name, each ended by a NUL byte; COMMAND prints the listing; OUT: file for one line for each item; if it
# is empty, nothing is written. Prints the seconds from the start of the command to the last item.
use strict;
use warnings;
use Time::HiRes qw(clock_gettime CLOCK_MONOTONIC);

my ($patterns_file, $command, $out_file) = @ARGV;

open(my $in, '<:raw', $patterns_file) or die "$patterns_file: $!";
my ($delimiter, $file, $version, $mode, $locker, $suffix, $project_file) = do { local $/ = "\0"; map { chomp; $_ } <$in> };
close $in;
my $delimiter_re = qr/$delimiter/;
my ($file_re, $version_re, $mode_re, $locker_re) = map { qr/$_/i } ($file, $version, $mode, $locker);

my $start = clock_gettime(CLOCK_MONOTONIC);
open(my $tool, '-|:raw', $command) or die "$command: $!";
my $text = do { local $/; <$tool> };
close $tool;
my @items;
for my $record (split $delimiter_re, $text, -1) {
    my ($working) = $record =~ $file_re or next;
    if (index($working, $suffix) >= 0) {
        my $name = $working;
        $name =~ s/.*\\// or $name =~ s/.*\///;
        $name =~ s/^\s+|\s+$//g;
        next if $name ne $project_file;
    }
    my ($rev) = $version eq '' ? '' : $record =~ $version_re;
    my $state = $mode eq '' ? 0 : $record =~ $mode_re ? 2 : 1;
    my ($owner) = $locker eq '' ? '' : $record =~ $locker_re;
    next if index(substr($working, rindex($working, '/') + 1), '.') < 0;
    push @items, [$working, defined $rev ? $rev : '', $state, defined $owner ? $owner : ''];
}
printf "%.6f\n", clock_gettime(CLOCK_MONOTONIC) - $start;

if ($out_file ne '') {
    open(my $out, '>:raw', $out_file) or die "$out_file: $!";
    print $out join('|', @$_), "\n" for @items;
    close $out;
}
